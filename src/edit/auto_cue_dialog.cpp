// SPDX-License-Identifier: GPL-2.0-or-later
// Cues by the clock.
#include "edit/auto_cue_dialog.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/requirements.h"
#include "model/cuts.h"
#include "model/exact_time.h"
#include "model/selection.h"
#include "model/time_mapping.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

std::string minutes_and_seconds(std::uint32_t seconds) {
  return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
}

// The number that the text begins with; 0 for none.
std::uint32_t leading_number(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  std::uint32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// Nothing without a ":".
std::optional<std::uint16_t> read_seconds(std::string_view text) {
  constexpr std::uint64_t most = 65535;  // that the setting holds
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::uint64_t seconds = std::uint64_t{leading_number(text.substr(0, colon))} * 60 +
                                leading_number(text.substr(colon + 1));
  return static_cast<std::uint16_t>(std::min(seconds, most));
}

// Gives the part that begins at `frame` a flag. False where none can begin.
bool set_cue(Editor& editor, EditPosition frame, std::int16_t gain, const std::u16string& name) {
  forget_stashed_texts(editor.selection);
  const PartIndex made = make_border(editor.document, frame);
  if (made >= part_count(editor.document)) return false;
  Part& part = editor.document.parts[made];
  part.part_iscue = 1;
  part.part_gainbeg = gain;
  if (name.empty()) return true;
  part.part_title = name;
  part.part_artist.clear();
  return true;
}

// A cue at each multiple of the interval, by exact times: a clock beside the player agrees.
Outcome set_cues(Editor& editor, const AutoCues& cues) {
  constexpr double shortest = 0.001;  // seconds: less than a frame
  const bool has_range = has_selected_range(editor.selection);
  const EditPosition first = has_range ? editor.selection.sel_beg : 0;
  const double interval = std::max(cues.interval, shortest);
  const double begin = exact_seconds(editor.document, first);
  const double total = exact_seconds(editor.document, editor.document.total_size);
  const double end = has_range ? exact_seconds(editor.document, editor.selection.sel_end) : total;
  const std::int16_t gain = editor.document.parts[part_at(editor.document, first)].part_gainbeg;

  Result result = Result::nothing;
  double multiple = first == 0 ? 1 : 0;  // the stream's start is a track start already
  while (begin + multiple * interval < end) {
    const EditPosition frame = exact_place(editor.document, begin + multiple * interval);
    const double time = exact_seconds(editor.document, frame);
    if (editor.document.parts.size() >= most_parts) return refuse_cues_from(editor.document, frame);
    if (!set_cue(editor, frame, gain,
                 cues.creates_names ? bytes_to_wide(format_seconds(time), true) : u""))
      break;
    result = Result::done;
    if (total - time < interval + cues.last_length) break;  // the next would be too short
    // Of multiples that fall on one frame the first counts.
    multiple = std::max(multiple, std::floor((time - begin) / interval)) + 1;
  }
  return result;
}

}  // namespace

void AutoCueDialog::begin() {
  interval = minutes_and_seconds(settings.autocue);
  last_length = minutes_and_seconds(settings.autocue_last);
  creates_names = settings.autocue_names != 0;
}

bool AutoCueDialog::accept() {
  const std::optional<std::uint16_t> seconds = read_seconds(interval);
  if (!seconds) return false;
  settings.autocue = *seconds;
  if (const auto last = read_seconds(last_length)) settings.autocue_last = *last;
  settings.autocue_names = creates_names ? 1 : 0;
  if (settings.autocue == 0) {
    show_refusal(ui_text(row::no_interval));
    return false;
  }
  result = set_auto_cues(editor, {.interval = static_cast<double>(settings.autocue),
                                  .last_length = static_cast<double>(settings.autocue_last),
                                  .creates_names = creates_names});
  return true;
}

Result set_auto_cues(Editor& editor, const AutoCues& cues) {
  return carry_out(editor, *command_of(editor, command::auto_cue_dialog), [&] {
    Outcome outcome = set_cues(editor, cues);
    editor.selection.sel_beg = editor.selection.sel_end = no_position;
    return outcome;
  });
}

bool auto_cue_dialog(Editor& editor) {
  AutoCueDialog dialog(editor);
  return show_dialog(dialog);
}

}  // namespace corvelin
