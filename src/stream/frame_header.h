// What a frame says of itself in its first bytes: MPEG audio of Layers II and III (ISO/IEC 11172-3,
// 2.4.1.3 and 2.4.2.3; ISO/IEC 13818-3; the unofficial version 2.5) and ADTS AAC (ISO/IEC
// 13818-7, 6.2). Owns the two records that tell what kind of stream is open. No file access: a
// header is judged alone, and certainty (a second header at the right distance) is the business of
// the frame locator.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace corvelin {

/// The unit of frame buffers, and the longest MPEG frame that is accepted, in bytes.
constexpr std::uint32_t frame_unit = 1792;

/// How many bytes of a frame are looked at.
constexpr std::size_t header_size = 9;

/// One decoded frame header. `version` 0 stands for no frame.
struct FrameInfo {
  std::uint16_t frame_length = 0;                           // bytes, header and padding included
  std::uint16_t bitrate = 0;                                // kilobits per second
  std::uint32_t sample_rate = 0;                            // hertz
  std::array<std::uint8_t, header_size> header_bytes = {};  // put here before decoding
  std::uint8_t channel_mode = 0;  // 1 stereo, 2 joint stereo, 3 dual channel, 4 mono; ADTS: 1 or 4
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

/// The values of `StreamInfo::vbr`. Anything but `constant` means a variable bitrate.
enum VbrState : std::uint8_t {
  vbr_constant = 0,
  vbr_seen = 1,        // a change of bitrate was seen in the frames
  vbr_header = 2,      // a "Xing" header was read
  vbr_toc_usable = 4,  // bit value: and it had a seek table
};

constexpr std::uint8_t no_xing_quality = 255;

/// The summary of the open stream.
struct StreamInfo {
  std::uint32_t xing_frames = 0;     // frame count of a VBR/Info header, 0 if none
  std::uint16_t vbr_frame_size = 0;  // bytes of the VBR/Info frame that the last save wrote
  /// `toc[i]` is the place, in 1/256 of the audio size, of the point at `i` per cent of the time.
  std::array<std::uint8_t, 100> toc = {};
  std::uint8_t xing_quality = 0;  // low byte of the header's quality, `no_xing_quality` if none
  /// The 28 bytes behind a VBR/Info header that its encoder signed; the rest is zero but for the
  /// audio length that a save puts behind them.
  std::array<std::uint8_t, 40> encoder_tag = {};
  std::uint32_t first_audio = 0;  // file offset of the first audio frame
  std::uint32_t audio_end = 0;    // file offset behind the audio as the probe found it
  std::uint32_t id3v2_size = 0;  // bytes of the tag at the file's start, header included; 0 if none
  std::array<std::uint8_t, 128> id3v1 = {};  // the file's last 128 bytes, tag or not
  std::uint8_t vbr = vbr_constant;
  std::uint32_t is_aac = 0;
  std::uint32_t has_info_header = 0;  // the file starts with an "Info" header
  float avg_bitrate = 0;              // bits per second
  float avg_frame_size = 0;           // bytes
  FrameInfo current_frame;            // the frame last decoded by the locator or the reader
  std::uint32_t ape_size = 0;         // bytes of the APE tag cut off the audio's end, 0 if none
};

extern StreamInfo stream;

/// Decodes `info.header_bytes` into the other fields, by the rules of ADTS when `stream.is_aac` is
/// set. Returns whether it is a header. When it is none by the MPEG rules all of `info` is zero.
bool decode_frame_header(FrameInfo& info);

/// The same, with the first bytes of `bytes` (what is missing counts as zero) in `header_bytes`.
bool decode_frame_header(FrameInfo& info, std::span<const std::uint8_t> bytes);

/// Whether a byte 255 and a byte with its top three bits set, the mark of a frame, stand at `at`.
inline bool has_sync(std::span<const std::uint8_t> bytes, std::size_t at) {
  return at + 1 < bytes.size() && bytes[at] == 0xFF && (bytes[at + 1] & 0xE0) == 0xE0;
}

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

/// Bytes of side information in a Layer III frame.
std::size_t side_info_size(const FrameInfo& info);

}  // namespace corvelin
