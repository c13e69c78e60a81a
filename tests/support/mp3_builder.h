// SPDX-License-Identifier: GPL-2.0-or-later
// Builds test audio byte by byte: frames of any version, layer, rate, mode and protection with side
// information and a payload that decoders accept, VBR/Info headers, tags, and garbage wherever a
// test wants it. Shares no code with the program, so that the two check each other.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvelin::test {

using Bytes = std::vector<std::uint8_t>;

/// The parameters of one frame, in the units of the standard's tables.
struct FrameShape {
  int version = 1;          // 1, 2, or 25 for MPEG 2.5
  int layer = 3;            // 2 or 3
  int bitrate = 128;        // kbit/s
  int sample_rate = 44100;  // hertz
  bool is_mono = false;
  bool has_crc = false;
  bool has_padding = false;
  bool copyright = false;
  bool original = false;
  bool private_bit = false;
  int global_gain = 150;  // in every field of a Layer III frame
  bool noisy = false;     // fill what no decoder reads with pseudo-random bytes, 0xFF among them
};

/// The length of such a frame in bytes.
std::size_t frame_length(const FrameShape& shape);

/// One MPEG frame: it decodes to silence.
Bytes mpeg_frame(const FrameShape& shape, unsigned seed = 0);

/// One ADTS frame of `length` bytes in all, AAC LC.
Bytes adts_frame(int sample_rate, std::size_t length, bool is_mono = false, bool has_crc = false);

/// The values of a VBR/Info header.
struct VbrHeader {
  std::string marker = "Xing";
  std::uint32_t flags = 15;
  std::uint32_t frames = 0;
  std::uint32_t bytes = 0;
  std::vector<std::uint8_t> toc = std::vector<std::uint8_t>(100, 0);
  std::uint32_t quality = 0;
  std::string encoder;  // up to 28 bytes
};

class Mp3Builder {
 public:
  Mp3Builder& shape(const FrameShape& shape);  // of the frames that follow
  Mp3Builder& frames(int count);
  Mp3Builder& frame(const FrameShape& shape);  // one of another shape
  /// ADTS frames at 44100 Hz, each `growth` bytes longer than the one before.
  Mp3Builder& adts(int count, std::size_t length, std::size_t growth = 0);
  Mp3Builder& vbr_header(const VbrHeader& header);
  Mp3Builder& raw(const Bytes& bytes);
  Mp3Builder& raw(std::string_view bytes);
  Mp3Builder& zeros(std::size_t count);

  /// An ID3v2.3 tag whose header claims `claimed` bytes behind it (by default what is there).
  Mp3Builder& id3v2(std::string_view frames, std::int64_t claimed = -1);
  /// A text frame of such a tag.
  static std::string id3v2_frame(std::string_view id, std::string_view content);

  /// 128 bytes "TAG" with this title.
  Mp3Builder& id3v1(std::string_view title);
  /// An APEv2 tag of `content` bytes and a footer, with or without a header; `claimed` is its size
  /// field.
  Mp3Builder& ape(std::size_t content, bool has_header, std::int64_t claimed = -1);

  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] const Bytes& bytes() const { return bytes_; }

 private:
  FrameShape shape_;
  unsigned seed_ = 0;
  Bytes bytes_;
};

}  // namespace corvelin::test
