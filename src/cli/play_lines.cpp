// SPDX-License-Identifier: GPL-2.0-or-later
// The line that plays.
#include "cli/play_lines.h"

#include <fmt/format.h>
#include <poll.h>

#include <csignal>
#include <optional>
#include <utility>

#include "audio/playback.h"
#include "cli/messages.h"
#include "cli/progress_line.h"
#include "cli/times.h"
#include "cli/words.h"
#include "edit/editor.h"
#include "edit/transport.h"
#include "model/document.h"
#include "model/selection.h"
#include "platform/devices/wave_device.h"
#include "platform/processes/interruption.h"

namespace corvelin {

namespace {

std::string progress_text(const Editor& editor) {
  const std::uint64_t percent =
      std::uint64_t{play_position(editor.playback)} * 100 / editor.document.total_size;
  return fmt::format("{:3}%  {} / {}", percent,
                     time_text(seconds_at(editor.document, play_position(editor.playback))),
                     time_text(total_seconds(editor.document)));
}

void wait_for_event() {
  pollfd due = {.fd = wave_event_descriptor(), .events = POLLIN, .revents = 0};
  ::poll(&due, 1, static_cast<int>(wave_look_interval.count()));
}

// Ctrl+C ends the play and nothing else. Another signal ends the whole run, which sees it next.
void look_for_interruption(Editor& editor) {
  if (interruption() == 0) return;
  if (interruption() == SIGINT) take_interruption();
  stop(editor);
}

Refusal reason_of_end(Editor& editor) {
  switch (std::exchange(editor.playback.ended_by, PlayEnd::ran_out)) {
    case PlayEnd::failed:
      return "nothing was played";
    case PlayEnd::lost:
      return "the play broke off: the output device is gone";
    case PlayEnd::cut_off:
      return "the play broke off: not all of the audio could be read";
    case PlayEnd::ran_out:
    case PlayEnd::stopped:
      break;
  }
  return no_refusal;
}

// A number up to `highest`, or nothing.
std::optional<std::uint8_t> small_number(Arguments words, std::size_t index, std::uint8_t highest) {
  if (index >= words.size()) return std::uint8_t{0};
  const auto number = parse_whole<std::uint8_t>(words[index]);
  return number && *number <= highest ? number : std::nullopt;
}

Refusal play_line(Editor& editor, Arguments words, HeadlessHost&) {
  const auto mode = small_number(words, 0, loop_selection);
  if (!mode)
    return fmt::format("MODE is 0 to {}, from the cursor or a prelisten", int{loop_selection});
  const auto speed = small_number(words, 1, fastest_play);
  if (!speed) return fmt::format("SPEED is 0 to {}", fastest_play);
  if (*mode != plain_play && !has_selection(editor.selection)) return "there is no selection";
  if (*mode == plain_play && editor.selection.cursor >= editor.document.total_size)
    return "the cursor is at the end of the stream";
  editor.playback.prelisten_mode = static_cast<PrelistenMode>(*mode);
  if (start_playback(editor.playback)) editor.playback.fast_play_level = *speed;
  return wait_for_play(editor);
}

constexpr EditLine table[] = {
    {"play", "[MODE] [SPEED]",
     "plays from the cursor; MODE 1 over the selection as if cut, 2 and 3 up to its begin and from "
     "there, 4 and 5 the same at its end, 6 in a loop",
     0, 2, true, play_line},
};

}  // namespace

Refusal wait_for_play(Editor& editor) {
  const bool is_heard = editor.playback.is_playing;
  {
    ProgressLine line;
    while (editor.playback.is_playing) {
      if (!deliver_wave_events()) wait_for_event();
      look_for_interruption(editor);
      if (line.is_due()) line.show(progress_text(editor));
    }
  }
  const std::uint32_t breaks = is_heard ? playback_underruns(editor.playback) : 0;
  if (breaks != 0)
    tell(fmt::format("The sound broke off {} times. A higher buffer_frm helps.", breaks));
  return reason_of_end(editor);
}

std::span<const EditLine> play_lines() { return table; }

}  // namespace corvelin
