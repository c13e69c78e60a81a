// SPDX-License-Identifier: GPL-2.0-or-later
// Plays the edited stream: what is heard is what a save would write. The device's buffers are
// filled from the stream one by one as they come back, on the main thread, so an edit is heard with
// the next of them. Which part of the stream is played, and the speed, are chosen here as well.
#pragma once

#include <cstdint>

#include "model/document.h"

namespace corvelin {

/// What is played. A prelisten plays a stretch of `prelisten_time` at a border of the selection.
enum PrelistenMode : std::uint8_t {
  plain_play = 0,
  prelisten_as_cut = 1,      // up to the selection and on behind it
  prelisten_to_begin = 2,    // up to its begin
  prelisten_from_begin = 3,  // from its begin on
  prelisten_to_end = 4,      // up to its end
  prelisten_from_end = 5,    // from its end on
  loop_selection = 6,
};

constexpr std::uint8_t fastest_play = 4;

enum class PlayEnd : std::uint8_t {
  failed,   // it could not start
  ran_out,  // all was heard
  stopped,  // by the user, by a command, or as there is nothing to decode with any more
  lost,     // the device is gone
  cut_off,  // a source could not be read to its end, which the user has been told
};

struct Playback {
  bool is_requested = false;      // a play is about to start
  bool is_playing = false;        // the output device is open
  bool playback_running = false;  // and its buffers have been filled
  bool is_recording_armed = false;
  std::uint8_t fast_play_level = 0;  // 0 normal speed, 4 the fastest; holds from the next fill on
  PrelistenMode prelisten_mode = plain_play;
  bool has_jumped = false;        // over the selection, in a prelisten of the cut
  bool stops_at_buffer = false;   // when the next buffer comes back
  EditPosition played_pos = 0;    // the end of the buffer that was played last
  EditPosition end_limit = 0;     // where this playback or measuring ends
  EditPosition saved_cursor = 0;  // where the cursor stood when a prelisten or a measuring began
  PlayEnd ended_by = PlayEnd::ran_out;  // how the last playback ended
};

extern Playback playback;

/// Starts to play from the cursor, or as `prelisten_mode` says. False when that fails; the user has
/// been told why, unless there was no selection for a prelisten. The cursor then is where it was.
bool start_playback();

/// Ends what plays, if anything does. The cursor goes to the frame that would have been heard next,
/// and behind a prelisten that had come to its end, back to where it stood.
void stop_playback();

/// Where the listener is: at the cursor, while nothing plays.
EditPosition play_position();

/// Moves the cursor, and with it what is heard, to the first frame at or behind `pos`. The one way
/// there for everything that the user does.
void seek_to(EditPosition pos);

/// How much of the stream a prelisten plays on one side of a border, in bytes.
std::uint32_t prelisten_bytes();

/// How often the sound broke off since it was started, as no buffer was filled in time.
std::uint32_t playback_underruns();

/// The setting `volume` holds from now on, for all that is played.
void apply_volume();

/// With the setting `keep_dev_open`, keeps the output device awake with silence while a document is
/// open: some take long to wake up.
void device_keepalive(bool open);

}  // namespace corvelin
