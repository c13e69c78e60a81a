// SPDX-License-Identifier: GPL-2.0-or-later
// Edit lines that change levels, and those that set many cues at once.
#include <fmt/format.h>

#include <optional>

#include "cli/edit_line.h"
#include "cli/edit_lines.h"
#include "cli/headless_host.h"
#include "cli/place.h"
#include "cli/words.h"
#include "edit/auto_cue_dialog.h"
#include "edit/editor.h"
#include "edit/level_commands.h"
#include "edit/level_dialog.h"
#include "edit/normalize_dialog.h"

namespace corvelin {

namespace {

// A whole number of steps within the slider's range.
std::optional<int> parse_steps(std::string_view word, int lowest, int highest) {
  const auto steps = parse_whole<int>(word.starts_with('+') ? word.substr(1) : word);
  return steps && *steps >= lowest && *steps <= highest ? steps : std::nullopt;
}

Refusal no_steps(std::string_view word, int lowest, int highest) {
  return fmt::format("\"{}\" is no level: give whole steps of 1.5 dB, {} to {}", word, lowest,
                     highest);
}

Refusal level_line(Editor& editor, Arguments words, HeadlessHost& host) {
  const auto from = parse_steps(words[0], lowest_level, highest_level);
  const auto to = parse_steps(words[1], lowest_level, highest_level);
  if (!from || !to) return no_steps(from ? words[1] : words[0], lowest_level, highest_level);
  host.set_next_dialog([from, to](Dialog& dialog) {
    auto& level = dynamic_cast<LevelDialog&>(dialog);
    level.set_from(*from);
    level.set_to(*to);
    return level.accept();
  });
  return run_edit_words(editor, {"level_dialog"}, host);
}

Refusal normalize_line(Editor& editor, Arguments words, HeadlessHost& host) {
  constexpr int lowest = NormalizeDialog::lowest_change;
  constexpr int highest = NormalizeDialog::highest_change;
  if (words.empty()) return run_edit_words(editor, {"normalize_dialog"}, host);
  const auto change = parse_steps(words[0], lowest, highest);
  if (!change) return no_steps(words[0], lowest, highest);
  host.set_next_dialog([change](Dialog& dialog) {
    auto& normalize = dynamic_cast<NormalizeDialog&>(dialog);
    normalize.cancel();  // the peak is of no use
    normalize.set_change(*change);
    return normalize.accept();
  });
  return run_edit_words(editor, {"normalize_dialog"}, host);
}

Refusal pause_detection_line(Editor& editor, Arguments, HeadlessHost& host) {
  return run_edit_words(editor, {"pause_detection_dialog"}, host);
}

Refusal auto_cue_line(Editor& editor, Arguments, HeadlessHost& host) {
  return run_edit_words(editor, {"auto_cue_dialog"}, host);
}

Refusal every_line(Editor& editor, Arguments words, HeadlessHost&) {
  const auto interval = typed_seconds(words[0]);
  if (!interval || *interval <= 0)
    return fmt::format("\"{}\" is no time: give 90s or 1:30", words[0]);
  switch (set_auto_cues(editor, {.interval = *interval})) {
    case Result::nothing:
      return "no multiple of that time lies in the stream";
    case Result::refused:
      return "not all of the cues could be set";
    case Result::done:
      break;
  }
  return no_refusal;
}

constexpr EditLine table[] = {
    {"level", "FROM TO", "changes the level of the selection, in steps of 1.5 dB at its ends", 2, 2,
     true, level_line},
    {"normalize", "[CHANGE]",
     "raises the selection or everything to full scale, or by steps of 1.5 dB", 0, 1, true,
     normalize_line},
    {"pause_detection", "", "sets cues at the ends of pauses, by the settings silence_...", 0, 0,
     true, pause_detection_line},
    {"auto_cue", "", "sets cues by the clock, by the settings autocue...", 0, 0, true,
     auto_cue_line},
    {"every", "TIME", "sets a cue at each multiple of a time", 1, 1, true, every_line},
};

}  // namespace

std::span<const EditLine> level_lines() { return table; }

}  // namespace corvelin
