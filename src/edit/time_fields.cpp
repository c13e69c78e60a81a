// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of the time fields.
#include "edit/time_fields.h"

#include <cstdint>
#include <cstdlib>
#include <optional>

#include "audio/playback.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/time_mapping.h"
#include "platform/host.h"
#include "platform/text/numbers.h"
#include "platform/text/text.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Moves `text` behind the first `mark`. False when there is none.
bool skip_behind(std::string_view& text, std::string_view mark) {
  const std::size_t found = text.find(mark);
  if (found == std::string_view::npos) return false;
  text.remove_prefix(found + mark.size());
  return true;
}

bool differ_by_more(std::int64_t a, std::int64_t b, std::int64_t limit) {
  return std::abs(a - b) > limit;
}

// The place that stands for `percent` of the stream.
std::uint32_t place_of(const Editor& editor, double percent) {
  return whole_part(percent * editor.document.total_size / 100, highest_position);
}

std::optional<std::uint32_t> typed_percentage(const Editor& editor, std::string_view text) {
  if (!skip_behind(text, "(") || text.find('%') == std::string_view::npos) return std::nullopt;
  return place_of(editor, leading_decimal(text));
}

// The three times of the selection's field, in bytes on the time scale.
struct TypedSelection {
  std::uint32_t begin;
  std::uint32_t end;
  std::uint32_t length;
};

std::optional<TypedSelection> typed_selection(const Document& document, std::string_view text) {
  if (!skip_behind(text, ui_text(row::selection))) return std::nullopt;
  TypedSelection typed = {};
  typed.begin = parse_time(document, text, ' ');
  if (!skip_behind(text, "-")) return std::nullopt;
  typed.end = parse_time(document, text, ' ');
  if (!skip_behind(text, "(")) return std::nullopt;
  typed.length = parse_time(document, text, ')');
  return typed;
}

EditPosition frame_at_time(Editor& editor, std::int64_t scaled) {
  return frame_at(editor.document,
                  from_time_scale(editor.document, static_cast<std::uint32_t>(scaled)),
                  editor.selection.current_frame);
}

void set_changed_ends(Editor& editor, const TypedSelection& typed) {
  constexpr std::int64_t rounding = 50;           // bytes
  constexpr std::int64_t length_rounding = 1792;  // bytes
  const std::int64_t begin = to_time_scale(editor.document, editor.selection.sel_beg);
  const bool length_changed =
      differ_by_more(begin + typed.length, to_time_scale(editor.document, editor.selection.sel_end),
                     length_rounding);
  if (length_changed)
    set_sel_end(editor.document, editor.selection,
                frame_at_time(editor, std::int64_t{typed.begin} + typed.length));
  if (differ_by_more(typed.begin, to_time_scale(editor.document, editor.selection.sel_beg),
                     rounding))
    set_sel_begin(editor.document, editor.selection, frame_at_time(editor, typed.begin));
  if (!length_changed &&
      differ_by_more(typed.end, to_time_scale(editor.document, editor.selection.sel_end), rounding))
    set_sel_end(editor.document, editor.selection, frame_at_time(editor, typed.end));
}

}  // namespace

void apply_now_field(Editor& editor, std::string_view text) {
  constexpr std::size_t longest = 120;  // characters
  constexpr std::size_t least = 5;
  constexpr std::int64_t rounding = 1999;  // bytes: a time this near was not changed
  text = cut_to_units(text, longest);
  if (text.size() < least || !skip_behind(text, ui_text(row::now))) return;
  text.remove_prefix(text.empty() ? 0 : 1);
  std::optional<std::uint32_t> place = parse_time(editor.document, text, ' ');
  if (!differ_by_more(*place, editor.selection.cursor, rounding))
    place = typed_percentage(editor, text);
  if (place) seek_to(editor.playback, from_time_scale(editor.document, *place));
  host().refresh_view(Refresh::places);
}

void apply_selection_field(Editor& editor, std::string_view text) {
  constexpr std::size_t longest = 160;  // characters
  const auto typed = typed_selection(editor.document, cut_to_units(text, longest));
  if (!typed) return;
  carry_out(editor, selection_change, [&typed, &editor] {
    set_changed_ends(editor, *typed);
    return Result::done;
  });
}

}  // namespace corvelin
