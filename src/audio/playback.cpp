// The state of the audio engine.
#include "audio/playback.h"

#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/numbers.h"
#include "settings/settings.h"

namespace corvelin {

Playback playback;

std::uint32_t prelisten_bytes() {
  constexpr double bits_per_byte_and_tenths = 80;
  return whole_part(settings.prelisten_time * double{stream.avg_bitrate} /
                    bits_per_byte_and_tenths);
}

EditPosition play_position() { return selection.cursor; }

void seek_to(EditPosition pos) { move_cursor(pos); }

}  // namespace corvelin
