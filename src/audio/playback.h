// SPDX-License-Identifier: GPL-2.0-or-later
// Plays the edited stream: what is heard is what a save would write. The device's buffers are
// filled from the stream one by one as they come back, on the main thread, so an edit is heard with
// the next of them. Which part of the stream is played, and the speed, are chosen here as well.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "audio/decoder_bridge.h"
#include "audio/fast_play.h"
#include "audio/level_meter.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/devices/wave_device.h"

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

/// The buffers that are on their way to the device and back.
struct PlayRing {
  WaveOutput device;
  std::array<WaveHeader, 4> headers;
  std::deque<WaveHeader*> idle;  // those that the device doesn't have
  bool end_is_queued = false;    // the device has the last of all buffers
};

/// What plays an edited stream. It stays where it is while it plays, and so do the document, the
/// places in it and the meter, which it keeps up to date.
struct Playback {
  Document& document;
  Selection& selection;
  LevelMeter& level_meter;

  bool is_requested = false;         // a play is about to start
  bool is_playing = false;           // the output device is open
  bool playback_running = false;     // and its buffers have been filled
  std::uint8_t fast_play_level = 0;  // 0 normal speed, 4 the fastest; holds from the next fill on
  PrelistenMode prelisten_mode = plain_play;
  bool has_jumped = false;              // over the selection, in a prelisten of the cut
  bool stops_at_buffer = false;         // when the next buffer comes back
  EditPosition played_pos = 0;          // the end of the buffer that was played last
  EditPosition end_limit = 0;           // where this playback ends
  EditPosition saved_cursor = 0;        // where the cursor stood when a prelisten began
  PlayEnd ended_by = PlayEnd::ran_out;  // how the last playback ended

  DecoderSession decoder;
  PlayRing ring;
  FastPlay fast_play;
  std::vector<std::int16_t> fast_play_block;
  EditPosition lowest_place = 0;  // from which on was played
  std::string fault_before;       // of the sources, when the play began
  WaveOutput keep_alive;          // keeps the device awake
};

/// Starts to play from the cursor, or as `prelisten_mode` says. False when that fails; the user has
/// been told why, unless there was no selection for a prelisten. The cursor then is where it was.
bool start_playback(Playback& playback);

/// Ends what plays, if anything does. The cursor goes to the frame that would have been heard next,
/// and behind a prelisten that had come to its end, back to where it stood.
void stop_playback(Playback& playback);

/// Where the listener is: at the cursor, while nothing plays.
EditPosition play_position(const Playback& playback);

/// Moves the cursor, and with it what is heard, to the first frame at or behind `pos`. The one way
/// there for everything that the user does.
void seek_to(Playback& playback, EditPosition pos);

/// How much of the stream a prelisten plays on one side of a border, in bytes.
std::uint32_t prelisten_bytes(const StreamInfo& stream);

/// How often the sound broke off since it was started, as no buffer was filled in time.
std::uint32_t playback_underruns(const Playback& playback);

/// The setting `volume` holds from now on, for all that is played.
void apply_volume();

/// With the setting `keep_dev_open`, keeps the output device awake with silence while a document is
/// open: some take long to wake up.
void device_keepalive(Playback& playback, bool open);

}  // namespace corvelin
