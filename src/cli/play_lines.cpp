// SPDX-License-Identifier: GPL-2.0-or-later
// The line that plays.
#include "cli/play_lines.h"

#include <fmt/format.h>
#include <poll.h>

#include <csignal>
#include <optional>
#include <utility>

#include "audio/playback.h"
#include "audio/the_player.h"
#include "cli/messages.h"
#include "cli/progress_line.h"
#include "cli/times.h"
#include "cli/words.h"
#include "edit/transport.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "platform/interruption.h"
#include "platform/wave_device.h"

namespace corvelin {

namespace {

std::string progress_text() {
  const std::uint64_t percent = std::uint64_t{play_position(playback)} * 100 / document.total_size;
  return fmt::format("{:3}%  {} / {}", percent, time_text(seconds_at(play_position(playback))),
                     time_text(total_seconds()));
}

void wait_for_event() {
  pollfd due = {.fd = wave_event_descriptor(), .events = POLLIN, .revents = 0};
  ::poll(&due, 1, static_cast<int>(wave_look_interval.count()));
}

// Ctrl+C ends the play and nothing else. Another signal ends the whole run, which sees it next.
void look_for_interruption() {
  if (interruption() == 0) return;
  if (interruption() == SIGINT) take_interruption();
  stop();
}

Refusal reason_of_end() {
  switch (std::exchange(playback.ended_by, PlayEnd::ran_out)) {
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

Refusal play_line(Arguments words, HeadlessHost&) {
  const auto mode = small_number(words, 0, loop_selection);
  if (!mode)
    return fmt::format("MODE is 0 to {}, from the cursor or a prelisten", int{loop_selection});
  const auto speed = small_number(words, 1, fastest_play);
  if (!speed) return fmt::format("SPEED is 0 to {}", fastest_play);
  if (*mode != plain_play && !has_selection(selection)) return "there is no selection";
  if (*mode == plain_play && selection.cursor >= document.total_size)
    return "the cursor is at the end of the stream";
  playback.prelisten_mode = static_cast<PrelistenMode>(*mode);
  if (start_playback(playback)) playback.fast_play_level = *speed;
  return wait_for_play();
}

constexpr EditLine table[] = {
    {"play", "[MODE] [SPEED]",
     "plays from the cursor; MODE 1 over the selection as if cut, 2 and 3 up to its begin and from "
     "there, 4 and 5 the same at its end, 6 in a loop",
     0, 2, true, play_line},
};

}  // namespace

Refusal wait_for_play() {
  const bool is_heard = playback.is_playing;
  {
    ProgressLine line;
    while (playback.is_playing) {
      if (!deliver_wave_events()) wait_for_event();
      look_for_interruption();
      if (line.is_due()) line.show(progress_text());
    }
  }
  const std::uint32_t breaks = is_heard ? playback_underruns(playback) : 0;
  if (breaks != 0)
    tell(fmt::format("The sound broke off {} times. A higher buffer_frm helps.", breaks));
  return reason_of_end();
}

std::span<const EditLine> play_lines() { return table; }

}  // namespace corvelin
