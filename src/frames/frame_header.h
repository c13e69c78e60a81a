// SPDX-License-Identifier: GPL-2.0-or-later
// What a frame says of itself in its first bytes: MPEG audio of Layers II and III (ISO/IEC 11172-3,
// 2.4.1.3 and 2.4.2.3; ISO/IEC 13818-3; the unofficial version 2.5) and ADTS AAC (ISO/IEC
// 13818-7, 6.2). No file access and no memory: a header is judged alone, and certainty (a second
// header at the right distance) is the business of the frame locator.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace corvelin {

/// The unit of frame buffers, and the longest MPEG frame that is accepted, in bytes.
constexpr std::uint32_t frame_unit = 1792;

/// What the length field of an ADTS header can hold, in bytes: a frame of many channels needs it.
constexpr std::uint32_t longest_adts_frame = 0x1FFF;

/// How many bytes of a frame are looked at.
constexpr std::size_t header_size = 9;

/// One decoded frame header. `version` 0 stands for no frame.
struct FrameInfo {
  std::uint16_t frame_length = 0;                           // bytes, header and padding included
  std::uint16_t bitrate = 0;                                // kilobits per second
  std::uint32_t sample_rate = 0;                            // hertz
  std::array<std::uint8_t, header_size> header_bytes = {};  // put here before decoding
  std::uint8_t channel_mode = 0;  // 1 stereo, 2 joint stereo, 3 dual channel, 4 mono; ADTS: 1 or 4
  std::uint8_t channels = 0;      // ADTS: 0 where the layout stands in the data
  std::uint8_t padding = 0;
  std::uint8_t version = 0;  // MPEG: 1, 2, or 3 for 2.5; ADTS: 2 for MPEG-2, 4 for MPEG-4
  std::uint8_t layer = 0;    // 2 or 3; 0 for ADTS
  std::uint32_t has_crc = 0;
  std::uint32_t copyright = 0;
  std::uint32_t original = 0;
  std::uint32_t private_bit = 0;

  bool operator==(const FrameInfo&) const = default;
};

constexpr std::uint8_t mono = 4;  // channel_mode

/// The two kinds of header. The bytes don't tell them apart: a stream's format is known before its
/// first frame is looked at.
enum class FrameFormat : std::uint8_t { mpeg, adts };

/// The longest frame of a format, in bytes.
constexpr std::uint32_t longest_frame(FrameFormat format) {
  return format == FrameFormat::adts ? longest_adts_frame : frame_unit;
}

/// The bit rates of Layer III in a version of MPEG (ISO/IEC 11172-3 and 13818-3), kbit/s,
/// ascending.
std::span<const std::uint16_t> layer3_bitrates(std::uint8_t version);

/// Decodes `info.header_bytes` into the other fields. Returns whether it is a header. When it is
/// none by the MPEG rules all of `info` is zero.
bool decode_frame_header(FrameInfo& info, FrameFormat format);

/// The same, with the first bytes of `bytes` (what is missing counts as zero) in `header_bytes`.
bool decode_frame_header(FrameInfo& info, std::span<const std::uint8_t> bytes, FrameFormat format);

/// The frames that differ from one only in bitrate, padding and what lies behind: nearly all that
/// follow it in its stream. For these a walk need not decode each header.
class SimilarFrames {
 public:
  SimilarFrames() = default;
  explicit SimilarFrames(const FrameInfo& frame);

  /// The length of the similar frame that `bytes` begin with; 0 if it is another one, or none.
  [[nodiscard]] std::uint32_t length_of(std::span<const std::uint8_t> bytes) const {
    if (bytes.size() < header_size || bytes[0] != 0xFF || (bytes[1] | 1U) != second_byte_ ||
        (bytes[2] >> 2 & 3U) != rate_index_)
      return 0;
    const std::uint32_t unpadded = lengths_[bytes[2] >> 4];
    return unpadded == 0 ? 0 : unpadded + (bytes[2] >> 1 & 1U);
  }

 private:
  unsigned second_byte_ = 0;  // with the CRC flag set; 0 stands for no frame at all
  unsigned rate_index_ = 0;
  std::array<std::uint16_t, 16> lengths_ = {};  // by bitrate index
};

/// "5.1" and the like of an ADTS frame with more than two channels; empty for all others.
std::string_view surround_name(std::size_t channels);

/// Whether a byte 255 and a byte with its top three bits set, the mark of a frame, stand at `at`.
inline bool has_sync(std::span<const std::uint8_t> bytes, std::size_t at) {
  return at + 1 < bytes.size() && bytes[at] == 0xFF && (bytes[at + 1] & 0xE0) == 0xE0;
}

/// The first place from `from` on and in front of `end` where such a mark stands; `end` if none.
std::size_t find_sync(std::span<const std::uint8_t> bytes, std::size_t from, std::size_t end);

/// Whether the frame of `length` bytes that begins at `at` is followed by a frame of its kind. Only
/// the CRC flag may differ.
inline bool is_followed(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t length) {
  const std::size_t next = at + length;
  return next + 1 < bytes.size() && bytes[next] == 0xFF &&
         ((bytes[next + 1] ^ bytes[at + 1]) & 0xFE) == 0;
}

/// Where the marker "Xing" or "Info" stands in a frame, in bytes from its start: behind the header
/// and the side information. A CRC word is not counted, so a protected frame carries no recognised
/// marker.
std::size_t vbr_header_offset(const FrameInfo& info);

/// How many samples of each channel a frame holds.
std::uint32_t samples_per_frame(const FrameInfo& info);

/// Bytes of side information in a Layer III frame.
std::size_t side_info_size(const FrameInfo& info);

}  // namespace corvelin
