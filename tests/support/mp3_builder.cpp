// SPDX-License-Identifier: GPL-2.0-or-later
// The test audio generator.
#include "support/mp3_builder.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace corvelin::test {

namespace {

const std::vector<int> bitrates_v1_l3 = {0,   32,  40,  48,  56,  64,  80, 96,
                                         112, 128, 160, 192, 224, 256, 320};
const std::vector<int> bitrates_v1_l2 = {0,   32,  48,  56,  64,  80,  96, 112,
                                         128, 160, 192, 224, 256, 320, 384};
const std::vector<int> bitrates_v2 = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
const std::vector<int> rates = {44100, 48000, 32000, 22050, 24000, 16000, 11025, 12000, 8000};
const std::vector<int> adts_rates = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                     22050, 16000, 12000, 11025, 8000,  7350};

unsigned index_in(const std::vector<int>& list, int value) {
  const auto found = std::find(list.begin(), list.end(), value);
  assert(found != list.end());
  return static_cast<unsigned>(found - list.begin());
}

const std::vector<int>& bitrates(const FrameShape& shape) {
  if (shape.version != 1) return bitrates_v2;
  return shape.layer == 3 ? bitrates_v1_l3 : bitrates_v1_l2;
}

// Bits one after the other, highest first.
class BitWriter {
 public:
  void put(unsigned value, int count) {
    while (count-- > 0) bits_.push_back((value >> count & 1) != 0);
  }
  [[nodiscard]] const std::vector<bool>& bits() const { return bits_; }
  void copy_to(Bytes& bytes, std::size_t at) const {
    for (std::size_t i = 0; i < bits_.size(); ++i)
      if (bits_[i])
        bytes[at + i / 8] = static_cast<std::uint8_t>(bytes[at + i / 8] | 0x80 >> i % 8);
  }

 private:
  std::vector<bool> bits_;
};

std::array<std::uint8_t, 4> header_of(const FrameShape& shape) {
  BitWriter header;
  header.put(0x7FF, 11);
  header.put(shape.version == 1 ? 3 : shape.version == 2 ? 2 : 0, 2);
  header.put(shape.layer == 3 ? 1 : 2, 2);
  header.put(shape.has_crc ? 0 : 1, 1);
  header.put(index_in(bitrates(shape), shape.bitrate), 4);
  header.put(index_in(rates, shape.sample_rate) % 3, 2);
  header.put(shape.has_padding ? 1 : 0, 1);
  header.put(shape.private_bit ? 1 : 0, 1);
  header.put(shape.is_mono ? 3 : 0, 2);
  header.put(0, 2);
  header.put(shape.copyright ? 1 : 0, 1);
  header.put(shape.original ? 1 : 0, 1);
  header.put(0, 2);
  Bytes bytes(4);
  header.copy_to(bytes, 0);
  return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

// Side information of empty granules: no main data, and the gain of the shape.
BitWriter side_info(const FrameShape& shape) {
  const int channels = shape.is_mono ? 1 : 2;
  const bool is_v1 = shape.version == 1;
  BitWriter side;
  side.put(0, is_v1 ? 9 : 8);                                              // main_data_begin
  side.put(0, is_v1 ? (shape.is_mono ? 5 : 3) : (shape.is_mono ? 1 : 2));  // private bits
  if (is_v1) side.put(0, 4 * channels);                                    // scfsi
  for (int granule = 0; granule < (is_v1 ? 2 : 1); ++granule) {
    for (int channel = 0; channel < channels; ++channel) {
      side.put(0, 12);  // part2_3_length
      side.put(0, 9);   // big_values
      side.put(static_cast<unsigned>(shape.global_gain), 8);
      side.put(0, is_v1 ? 4 : 9);   // scalefac_compress
      side.put(0, 1 + 15 + 4 + 3);  // long blocks, tables, regions
      side.put(0, is_v1 ? 3 : 2);   // preflag, scalefac_scale, count1table
    }
  }
  return side;
}

// Division of the protected bits by x^16 + x^15 + x^2 + 1, with the register set to ones.
unsigned crc_of(const std::vector<bool>& bits) {
  unsigned crc = 0xFFFF;
  for (const bool bit : bits) {
    const bool top = (crc & 0x8000) != 0;
    crc = crc << 1 & 0xFFFF;
    if (top != bit) crc ^= 0x8005;
  }
  return crc;
}

void fill_with_noise(Bytes& bytes, std::size_t from, unsigned seed) {
  std::uint32_t state = seed * 2654435761U + 1;
  for (std::size_t i = from; i < bytes.size(); ++i) {
    state = state * 1664525 + 1013904223;
    bytes[i] = state >> 28 == 0 ? 0xFF : static_cast<std::uint8_t>(state >> 16);
  }
}

std::string big_endian(std::uint32_t value) {
  return {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
          static_cast<char>(value >> 8), static_cast<char>(value)};
}

std::string little_endian(std::uint32_t value) {
  const std::string big = big_endian(value);
  return {big.rbegin(), big.rend()};
}

std::string syncsafe(std::int64_t value) {
  std::string text;
  for (int shift = 21; shift >= 0; shift -= 7) text += static_cast<char>(value >> shift & 0x7F);
  return text;
}

}  // namespace

std::size_t frame_length(const FrameShape& shape) {
  const int slots = shape.layer == 3 && shape.version != 1 ? 72 : 144;
  return static_cast<std::size_t>(slots * shape.bitrate * 1000 / shape.sample_rate +
                                  (shape.has_padding ? 1 : 0));
}

Bytes mpeg_frame(const FrameShape& shape, unsigned seed) {
  Bytes bytes(frame_length(shape));
  const std::array<std::uint8_t, 4> header = header_of(shape);
  std::copy(header.begin(), header.end(), bytes.begin());
  const std::size_t side_start = shape.has_crc ? 6 : 4;
  if (shape.layer == 2) return bytes;  // no bit allocated: silence
  const BitWriter side = side_info(shape);
  side.copy_to(bytes, side_start);
  if (shape.has_crc) {
    BitWriter covered;
    covered.put(header[2], 8);
    covered.put(header[3], 8);
    std::vector<bool> bits = covered.bits();
    bits.insert(bits.end(), side.bits().begin(), side.bits().end());
    const unsigned crc = crc_of(bits);
    bytes[4] = static_cast<std::uint8_t>(crc >> 8);
    bytes[5] = static_cast<std::uint8_t>(crc);
  }
  if (shape.noisy) fill_with_noise(bytes, side_start + side.bits().size() / 8, seed);
  return bytes;
}

Bytes adts_frame(int sample_rate, std::size_t length, bool is_mono, bool has_crc) {
  BitWriter bits;
  bits.put(0xFFF, 12);
  bits.put(0, 3);  // MPEG-4, layer 0
  bits.put(has_crc ? 0 : 1, 1);
  bits.put(1, 2);  // AAC LC
  bits.put(index_in(adts_rates, sample_rate), 4);
  bits.put(0, 1);
  bits.put(is_mono ? 1 : 2, 3);
  bits.put(0, 4);
  bits.put(static_cast<unsigned>(length), 13);
  bits.put(0x7FF, 11);
  bits.put(0, 2);
  if (has_crc) bits.put(0, 16);
  Bytes bytes(length);
  bits.copy_to(bytes, 0);
  return bytes;
}

Mp3Builder& Mp3Builder::shape(const FrameShape& shape) {
  shape_ = shape;
  return *this;
}

Mp3Builder& Mp3Builder::frames(int count) {
  for (int i = 0; i < count; ++i) frame(shape_);
  return *this;
}

Mp3Builder& Mp3Builder::frame(const FrameShape& shape) { return raw(mpeg_frame(shape, ++seed_)); }

Mp3Builder& Mp3Builder::adts(int count, std::size_t length, std::size_t growth) {
  for (; count > 0; --count, length += growth) raw(adts_frame(44100, length));
  return *this;
}

Mp3Builder& Mp3Builder::vbr_header(const VbrHeader& header) {
  Bytes bytes = mpeg_frame(shape_);
  std::fill(bytes.begin() + 4, bytes.end(), 0);
  const std::size_t two_channels = shape_.version == 1 ? 36 : 21;
  const std::size_t marker = shape_.is_mono ? (shape_.version == 1 ? 21 : 13) : two_channels;
  std::string fields = header.marker + big_endian(header.flags) + big_endian(header.frames) +
                       big_endian(header.bytes);
  fields.append(header.toc.begin(), header.toc.end());
  fields += big_endian(header.quality) + header.encoder;
  const std::size_t room = bytes.size() - marker;
  std::copy_n(fields.begin(), std::min(fields.size(), room),
              bytes.begin() + static_cast<int>(marker));
  return raw(bytes);
}

Mp3Builder& Mp3Builder::raw(const Bytes& bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

Mp3Builder& Mp3Builder::raw(std::string_view bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

Mp3Builder& Mp3Builder::zeros(std::size_t count) {
  bytes_.resize(bytes_.size() + count);
  return *this;
}

Mp3Builder& Mp3Builder::id3v2(std::string_view frames, std::int64_t claimed) {
  const std::int64_t size = claimed < 0 ? static_cast<std::int64_t>(frames.size()) : claimed;
  return raw(std::string("ID3\x03\0\0", 6) + syncsafe(size)).raw(frames);
}

std::string Mp3Builder::id3v2_frame(std::string_view id, std::string_view content) {
  return std::string(id) + big_endian(static_cast<std::uint32_t>(content.size())) +
         std::string(2, '\0') + std::string(content);
}

Mp3Builder& Mp3Builder::id3v1(std::string_view title) {
  std::string tag = "TAG" + std::string(title);
  tag.resize(128);
  tag[127] = '\xFF';
  return raw(tag);
}

Mp3Builder& Mp3Builder::ape(std::size_t content, bool has_header, std::int64_t claimed) {
  const auto size =
      static_cast<std::uint32_t>(claimed < 0 ? static_cast<std::int64_t>(content) + 32 : claimed);
  const auto block = [&](std::uint32_t flags) {
    return "APETAGEX" + little_endian(2000) + little_endian(size) + little_endian(1) +
           little_endian(flags) + std::string(8, '\0');
  };
  const std::uint32_t header_flag = has_header ? 0x80000000 : 0;
  if (has_header) raw(block(header_flag | 0x20000000));
  return raw(std::string(content, 'x')).raw(block(header_flag));
}

}  // namespace corvelin::test
