// Comparing of frames with the stream.
#include "document/stream_match.h"

#include <cstdlib>

#include "model/frame_locator.h"
#include "platform/numbers.h"

namespace corvelin {

FrameInfo stream_frame() {
  if (stream.current_frame.version == 0) frame_at(0);
  return stream.current_frame;
}

bool have_same_parameters(const FrameInfo& a, const FrameInfo& b) {
  return a.channel_mode == b.channel_mode && a.sample_rate == b.sample_rate &&
         a.version == b.version && a.layer == b.layer && a.has_crc == b.has_crc;
}

void take_in_bitrate(const FrameInfo& frame) {
  constexpr std::int64_t tolerance = 2;  // kbit/s
  const std::int64_t average = whole_part(double{stream.avg_bitrate} / 1000);
  if (std::abs(frame.bitrate - average) > tolerance) stream.vbr = vbr_seen;
}

}  // namespace corvelin
