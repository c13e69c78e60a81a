// What the audio engine is doing, as far as the commands of the editor must know.
#pragma once

#include <cstdint>

#include "model/document.h"

namespace corvelin {

/// What is played.
enum PrelistenMode : std::uint8_t {
  plain_play = 0,
  prelisten_as_cut = 1,      // up to the selection and on behind it
  prelisten_to_begin = 2,    // up to its begin
  prelisten_from_begin = 3,  // from its begin on
  prelisten_to_end = 4,      // up to its end
  prelisten_from_end = 5,    // from its end on
  loop_selection = 6,
};

struct Playback {
  bool is_playing = false;
  bool is_recording_armed = false;
  bool is_recording_writing = false;  // armed, and started
  std::uint8_t fast_play_level = 0;   // 0 normal speed, 4 the fastest
  PrelistenMode prelisten_mode = plain_play;
  EditPosition end_limit = 0;     // where this playback or measuring ends
  EditPosition saved_cursor = 0;  // where the cursor stood when a prelisten or a measuring began
};

extern Playback playback;

/// How much of the stream a prelisten plays on one side of a border, in bytes.
std::uint32_t prelisten_bytes();

/// Where the listener is: at the cursor, while nothing plays.
EditPosition play_position();

/// Moves the cursor, and with it what is heard, to the first frame at or behind `pos`. The one way
/// there for everything that the user does.
void seek_to(EditPosition pos);

}  // namespace corvelin
