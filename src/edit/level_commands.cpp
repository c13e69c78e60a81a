// SPDX-License-Identifier: GPL-2.0-or-later
// Gains at borders.
#include "edit/level_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "edit/editor.h"
#include "edit/level_point.h"
#include "edit/places.h"
#include "edit/requirements.h"
#include "model/cuts.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

void add_gain(std::int16_t& gain, int change) {
  using Limits = std::numeric_limits<std::int16_t>;
  gain = static_cast<std::int16_t>(std::clamp<int>(gain + change, Limits::min(), Limits::max()));
}

std::int16_t& gain_of(Editor& editor, PartIndex part) {
  return editor.document.parts[part].part_gainbeg;
}

Result level_step(Editor& editor, int delta) {
  if (editor.document.kind.layer != 3) return Result::nothing;
  const bool is_at_end = editor.selection.cursor >= editor.document.total_size;
  std::int16_t& gain =
      is_at_end ? editor.document.end_gain : gain_of(editor, editor.document.current_part);
  const int changed = gain + delta;
  if (changed >= lowest_level && changed <= highest_level)
    gain = static_cast<std::int16_t>(changed);
  clear_cues_round_level(editor, editor.document.current_part);
  return Result::done;
}

enum class Stages { one, two };

// Makes the border of the second stage at the frame there, for a change of level of which a third
// is left to happen before it or behind it.
void make_stage(Editor& editor, EditPosition pos, Stages stages, std::uint32_t length, int change) {
  constexpr double shortest = 8;  // average frames
  if (stages == Stages::one || length < shortest * editor.document.stream.avg_frame_size) return;
  const EditPosition frame = locate_frame(editor.document, part_at(editor.document, pos), pos,
                                          editor.selection.current_frame);
  if (frame == no_position) return;
  const PartIndex made = make_border(editor.document, frame);
  if (made < part_count(editor.document)) add_gain(gain_of(editor, made), change / -3);
}

// Where a fade out begins and a fade in ends: at the selection, or the cursor without one.
EditPosition fade_begin(const Editor& editor) {
  return has_selection(editor.selection) ? editor.selection.sel_beg : editor.selection.cursor;
}
EditPosition fade_end(const Editor& editor) {
  return has_selection(editor.selection) ? editor.selection.sel_end : editor.selection.cursor;
}

// A fade goes to the end of the stream from behind its middle, and from its start up to there.
bool fades_out(const Editor& editor) {
  return fade_begin(editor) * std::uint64_t{2} > editor.document.total_size &&
         fade_begin(editor) < editor.document.total_size;
}
bool fades_in(const Editor& editor) {
  return fade_end(editor) * std::uint64_t{2} < editor.document.total_size && fade_end(editor) > 0;
}

void fade_out(Editor& editor, Stages stages) {
  const PartIndex behind =
      delete_range(editor.document, editor.selection.sel_beg, editor.selection.sel_beg);
  gain_of(editor, behind) = editor.document.end_gain;
  editor.document.end_gain = bottom_gain();
  const std::uint32_t length = editor.document.total_size - editor.selection.sel_beg;
  const auto two_thirds = static_cast<std::uint32_t>(std::uint64_t{length} * 2 / 3);
  make_stage(editor, editor.selection.sel_beg + two_thirds, stages, length,
             gain_of(editor, behind) - editor.document.end_gain);
}

void fade_in(Editor& editor, Stages stages) {
  const PartIndex behind =
      delete_range(editor.document, editor.selection.sel_end, editor.selection.sel_end);
  gain_of(editor, behind) = gain_of(editor, 0);
  gain_of(editor, 0) = bottom_gain();
  make_stage(editor, editor.selection.sel_end / 3, stages, editor.selection.sel_end,
             gain_of(editor, behind) - gain_of(editor, 0));
}

void fade(Editor& editor, Stages stages) {
  ensure_selection(editor.selection, editor.selection.cursor);
  if (fades_out(editor)) {
    fade_out(editor, stages);
  } else {
    fade_in(editor, stages);
  }
  clear_selection(editor.selection);
}

// The part that begins with the second frame of the selection: over the first one the level slides.
PartIndex begin_edge(Editor& editor) {
  const PartIndex first =
      delete_range(editor.document, editor.selection.sel_beg, editor.selection.sel_beg);
  const EditPosition second = next_frame_in(editor.document, first, editor.selection.sel_beg,
                                            editor.selection.current_frame);
  if (second >= editor.selection.sel_end) return first;  // also when there is none
  editor.selection.sel_beg = second;
  return make_border(editor.document, second);
}

// The part that begins with the last frame of the selection.
PartIndex end_edge(Editor& editor) {
  delete_range(editor.document, editor.selection.sel_end, editor.selection.sel_end);
  set_sel_end(
      editor.document, editor.selection,
      frame_before(editor.document, editor.selection.sel_end, editor.selection.current_frame));
  return delete_range(editor.document, editor.selection.sel_end, editor.selection.sel_end);
}

}  // namespace

std::int16_t bottom_gain() {
  constexpr std::int32_t lowest = 90;  // dB, whatever the settings file says
  return static_cast<std::int16_t>(-2 * std::min<std::int32_t>(settings.lowest_gain, lowest) / 3);
}

std::string gain_text(int gain) { return fmt::format("{:+2.1f} dB", gain * 15 / 10.0); }

Result part_level_up(Editor& editor) { return level_step(editor, 1); }
Result part_level_down(Editor& editor) { return level_step(editor, -1); }

Outcome need_fade(const Editor& editor) {
  constexpr std::size_t new_parts = 2;
  if (Outcome level = need_level_control(editor.document); level.result != Result::done)
    return level;
  if (!fades_out(editor) && !fades_in(editor)) return refuse(ui_text(row::nothing_to_fade));
  const bool is_in_way = fades_out(editor) ? part_at(editor.document, fade_begin(editor)) + 1 !=
                                                 part_count(editor.document)
                                           : part_at(editor.document, fade_end(editor)) != 0;
  if (is_in_way) return refuse(ui_text(row::fade_over_edit_points));
  return need_room_for_parts(editor.document, new_parts);
}

void simple_fade(Editor& editor) { fade(editor, Stages::one); }
void two_stage_fade(Editor& editor) { fade(editor, Stages::two); }

void shift_selection_level(Editor& editor, int change) {
  const PartIndex first = editor.selection.sel_beg == 0 ? PartIndex{0} : begin_edge(editor);
  const bool reaches_end = editor.selection.sel_end >= editor.document.total_size;
  const PartIndex last =
      reaches_end ? part_at(editor.document, editor.document.total_size) : end_edge(editor);
  for (std::size_t i = first; i <= last; ++i)
    add_gain(editor.document.parts[i].part_gainbeg, change);
  if (reaches_end) add_gain(editor.document.end_gain, change);
  forget_stashed_texts(editor.selection);
  editor.selection.sel_gain = editor.selection.sel_gain_end = 0;
  editor.selection.sel_iscue = 0;
}

}  // namespace corvelin
