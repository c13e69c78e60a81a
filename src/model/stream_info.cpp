// SPDX-License-Identifier: GPL-2.0-or-later
// The records of the open stream.
#include "model/stream_info.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "platform/text/numbers.h"

namespace corvelin {

FrameFormat frame_format(const StreamInfo& stream) {
  return stream.is_aac != 0 ? FrameFormat::adts : FrameFormat::mpeg;
}

StreamKind kind_of(const FrameInfo& frame) {
  return {.version = frame.version,
          .layer = frame.layer,
          .sample_rate = frame.sample_rate,
          .channel_mode = frame.channel_mode,
          .channels = frame.channels,
          .has_crc = frame.has_crc != 0};
}

std::string text_of(const StreamKind& kind) {
  constexpr std::array<std::string_view, 5> modes = {"-", "stereo", "joint stereo", "dual channel",
                                                     "mono"};
  std::string_view channels = surround_name(kind.channels);
  if (channels.empty()) channels = modes[std::min<std::size_t>(kind.channel_mode, mono)];
  const std::string_view version = kind.version == 3 ? "2.5" : kind.version == 2 ? "2" : "1";
  const bool is_adts = kind.layer == 0;
  const std::string format =
      is_adts ? fmt::format("ADTS AAC (MPEG-{})", kind.version)
              : fmt::format("MPEG {} Layer {}", version, kind.layer == 3 ? "III" : "II");
  return fmt::format("{}, {} Hz, {}, CRC: {}", format, kind.sample_rate, channels,
                     kind.has_crc ? "yes" : "no");
}

void take_in_bitrate(StreamInfo& stream, const FrameInfo& frame) {
  constexpr std::int64_t tolerance = 2;  // kbit/s
  const std::int64_t average = whole_part(double{stream.avg_bitrate} / 1000);
  if (std::abs(frame.bitrate - average) > tolerance) stream.vbr = vbr_seen;
}

}  // namespace corvelin
