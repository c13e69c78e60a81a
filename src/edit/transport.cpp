// SPDX-License-Identifier: GPL-2.0-or-later
// Requests to play.
#include "edit/transport.h"

#include <chrono>
#include <utility>

#include "audio/playback.h"
#include "audio/recorder.h"
#include "audio/the_player.h"
#include "edit/record_commands.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "platform/host.h"

namespace corvelin {

namespace {

// Already shown as playing.
void start_soon() {
  constexpr std::chrono::milliseconds pause(50);
  playback.is_requested = true;
  host().show_transport();
  host().call_later(pause, [] {
    if (!std::exchange(playback.is_requested, false)) return;  // stopped again
    start_playback(playback);
    host().show_transport();
    host().refresh_view(Refresh::places);
  });
}

Result change_fast_play(int step) {
  const int level = playback.fast_play_level + step;
  if (level < 0 || level > fastest_play) return Result::nothing;
  playback.fast_play_level = static_cast<std::uint8_t>(level);
  return Result::done;
}

}  // namespace

Result play() {
  if (recorder.rec_writing) return Result::nothing;
  if (recorder.is_armed) return start_recording() ? Result::done : Result::refused;
  if (playback.is_playing || selection.cursor >= document.total_size) return Result::nothing;
  stop_playback(playback);
  start_soon();
  return Result::done;
}

Result request_prelisten(PrelistenMode mode) {
  if (playback.is_playing) {
    if (mode == prelisten_to_end) return change_fast_play(-1);
    return mode == prelisten_from_end ? change_fast_play(+1) : Result::nothing;
  }
  if (!has_selection(selection)) return Result::nothing;
  playback.prelisten_mode = mode;
  start_soon();
  return Result::done;
}

void stop_playing() {
  const bool was_playing = playback.is_playing;
  playback.is_requested = false;
  stop_playback(playback);
  host().show_transport();
  if (was_playing) host().refresh_view(Refresh::places);
}

void fall_silent() {
  stop_playing();
  device_keepalive(playback, false);
}

void stop() {
  if (recorder.is_armed) {
    stop_recording();
  } else {
    stop_playing();
  }
}

Result play_or_stop() {
  if (!playback.is_playing && !recorder.rec_writing) return play();
  stop();
  return Result::done;
}

}  // namespace corvelin
