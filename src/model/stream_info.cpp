// The records of the open stream.
#include "model/stream_info.h"

#include <cstdlib>

#include "platform/numbers.h"

namespace corvelin {

StreamInfo stream;
StreamKind stream_kind;

FrameFormat frame_format() { return stream.is_aac != 0 ? FrameFormat::adts : FrameFormat::mpeg; }

StreamKind kind_of(const FrameInfo& frame) {
  return {.version = frame.version,
          .layer = frame.layer,
          .sample_rate = frame.sample_rate,
          .channel_mode = frame.channel_mode,
          .has_crc = frame.has_crc != 0};
}

void take_in_bitrate(const FrameInfo& frame) {
  constexpr std::int64_t tolerance = 2;  // kbit/s
  const std::int64_t average = whole_part(double{stream.avg_bitrate} / 1000);
  if (std::abs(frame.bitrate - average) > tolerance) stream.vbr = vbr_seen;
}

}  // namespace corvelin
