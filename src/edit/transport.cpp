// SPDX-License-Identifier: GPL-2.0-or-later
// Requests to play.
#include "edit/transport.h"

#include <chrono>
#include <utility>

#include "audio/playback.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "edit/record_commands.h"
#include "model/document.h"
#include "model/selection.h"
#include "platform/host.h"

namespace corvelin {

namespace {

// Already shown as playing.
void start_soon(Editor& editor) {
  constexpr std::chrono::milliseconds pause(50);
  editor.playback.is_requested = true;
  host().show_transport();
  host().call_later(pause, [&editor] {
    if (!std::exchange(editor.playback.is_requested, false)) return;  // stopped again
    start_playback(editor.playback);
    host().show_transport();
    host().refresh_view(Refresh::places);
  });
}

Result change_fast_play(Editor& editor, int step) {
  const int level = editor.playback.fast_play_level + step;
  if (level < 0 || level > fastest_play) return Result::nothing;
  editor.playback.fast_play_level = static_cast<std::uint8_t>(level);
  return Result::done;
}

}  // namespace

Result play(Editor& editor) {
  if (editor.recorder.rec_writing) return Result::nothing;
  if (editor.recorder.is_armed) return start_recording(editor) ? Result::done : Result::refused;
  if (editor.playback.is_playing || editor.selection.cursor >= editor.document.total_size)
    return Result::nothing;
  stop_playback(editor.playback);
  start_soon(editor);
  return Result::done;
}

Result request_prelisten(Editor& editor, PrelistenMode mode) {
  if (editor.playback.is_playing) {
    if (mode == prelisten_to_end) return change_fast_play(editor, -1);
    return mode == prelisten_from_end ? change_fast_play(editor, +1) : Result::nothing;
  }
  if (!has_selection(editor.selection)) return Result::nothing;
  editor.playback.prelisten_mode = mode;
  start_soon(editor);
  return Result::done;
}

void stop_playing(Editor& editor) {
  const bool was_playing = editor.playback.is_playing;
  editor.playback.is_requested = false;
  stop_playback(editor.playback);
  host().show_transport();
  if (was_playing) host().refresh_view(Refresh::places);
}

void fall_silent(Editor& editor) {
  stop_playing(editor);
  device_keepalive(editor.playback, false);
}

void stop(Editor& editor) {
  if (editor.recorder.is_armed) {
    stop_recording(editor);
  } else {
    stop_playing(editor);
  }
}

Result play_or_stop(Editor& editor) {
  if (!editor.playback.is_playing && !editor.recorder.rec_writing) return play(editor);
  stop(editor);
  return Result::done;
}

}  // namespace corvelin
