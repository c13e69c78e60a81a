// What the audio engine is doing, as far as the commands of the editor must know.
#pragma once

#include "model/document.h"

namespace corvelin {

struct Playback {
  bool is_playing = false;
  bool is_recording_armed = false;
  std::uint8_t fast_play_level = 0;  // 0 normal speed, 4 the fastest
};

extern Playback playback;

/// Where the listener is: at the cursor, while nothing plays.
EditPosition play_position();

}  // namespace corvelin
