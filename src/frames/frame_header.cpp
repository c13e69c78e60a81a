// SPDX-License-Identifier: GPL-2.0-or-later
// Decoding of frame headers.
#include "frames/frame_header.h"

#include <algorithm>
#include <cstring>

namespace corvelin {

namespace {

// Kilobits per second by bitrate index; 0 stands for free format and for the invalid index 15.
constexpr std::array<std::uint16_t, 16> bitrates_mpeg1_layer3 = {
    0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
constexpr std::array<std::uint16_t, 16> bitrates_mpeg1_layer2 = {
    0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0};
constexpr std::array<std::uint16_t, 16> bitrates_mpeg2 = {0,  8,  16, 24,  32,  40,  48,  56,
                                                          64, 80, 96, 112, 128, 144, 160, 0};

constexpr std::uint32_t sample_rates_mpeg[4][4] = {
    {0, 0, 0, 0}, {44100, 48000, 32000, 0}, {22050, 24000, 16000, 0}, {11025, 12000, 8000, 0}};
constexpr std::array<std::uint32_t, 13> sample_rates_adts = {
    96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050, 16000, 12000, 11025, 8000, 7350};

constexpr std::uint32_t shortest_frame = 24;  // bytes, MPEG

// Lengths of unpadded frames by version, Layer III or not, sample rate index and bitrate index, 0
// for none and for one that is not accepted. A save decodes a million headers and more, and
// divisions would be half of that.
using BitrateLengths = std::array<std::uint16_t, 16>;
using LengthTable = std::array<std::array<std::array<BitrateLengths, 4>, 2>, 4>;

constexpr const std::array<std::uint16_t, 16>& bitrates_of(std::uint8_t version, bool is_layer3) {
  if (version != 1) return bitrates_mpeg2;
  return is_layer3 ? bitrates_mpeg1_layer3 : bitrates_mpeg1_layer2;
}

// Bytes of an MPEG frame without padding, at `bitrate` kilobits per second and `sample_rate` hertz.
constexpr std::uint32_t mpeg_frame_length(std::uint32_t bitrate, std::uint32_t sample_rate,
                                          std::uint8_t version, bool is_layer3) {
  const std::uint32_t length = bitrate * 144000 / sample_rate;
  return is_layer3 && version > 1 ? length / 2 : length;
}

constexpr LengthTable make_length_table() {
  LengthTable table = {};
  for (std::uint8_t version = 1; version <= 3; ++version) {
    for (const bool is_layer3 : {false, true}) {
      for (std::size_t bitrate = 1; bitrate < 15; ++bitrate) {
        for (std::size_t rate = 0; rate < 3; ++rate) {
          const std::uint32_t length =
              mpeg_frame_length(bitrates_of(version, is_layer3)[bitrate],
                                sample_rates_mpeg[version][rate], version, is_layer3);
          const bool is_accepted = length >= shortest_frame && length < frame_unit;
          table[version][is_layer3][rate][bitrate] =
              static_cast<std::uint16_t>(is_accepted ? length : 0);
        }
      }
    }
  }
  return table;
}

constexpr LengthTable frame_lengths = make_length_table();

constexpr std::uint32_t shortest_adts_frame = 8;  // bytes: a header and the end of the data

// By the version bits (4-3) of the second header byte. 01 is reserved.
constexpr std::array<std::uint8_t, 4> versions = {3, 0, 2, 1};

using HeaderBytes = std::array<std::uint8_t, header_size>;

bool decode_mpeg_header(FrameInfo& info, const HeaderBytes& bytes) {
  info = {};
  if (bytes[0] != 0xFF || (bytes[1] & 0xE0) != 0xE0) return false;

  const std::uint8_t version = versions[bytes[1] >> 3 & 3];
  const int layer_bits = bytes[1] >> 1 & 3;  // 01 Layer III, 10 Layer II; Layer I is not edited
  if (version == 0 || (layer_bits != 1 && layer_bits != 2)) return false;
  const bool is_layer3 = layer_bits == 1;
  const std::size_t bitrate_index = bytes[2] >> 4;
  const std::size_t rate_index = bytes[2] >> 2 & 3;
  const std::uint8_t padding = bytes[2] >> 1 & 1;
  const std::uint32_t unpadded = frame_lengths[version][is_layer3][rate_index][bitrate_index];
  if (unpadded == 0) return false;

  info.header_bytes = bytes;
  info.frame_length = static_cast<std::uint16_t>(unpadded + padding);
  info.bitrate = bitrates_of(version, is_layer3)[bitrate_index];
  info.sample_rate = sample_rates_mpeg[version][rate_index];
  info.channel_mode = static_cast<std::uint8_t>((bytes[3] >> 6) + 1);
  info.channels = info.channel_mode == mono ? 1 : 2;
  info.padding = padding;
  info.version = version;
  info.layer = is_layer3 ? 3 : 2;
  info.has_crc = (bytes[1] & 1) == 0 ? 1 : 0;
  info.copyright = bytes[3] >> 3 & 1;
  info.original = bytes[3] >> 2 & 1;
  info.private_bit = bytes[2] & 1;
  return true;
}

bool decode_adts_header(FrameInfo& info, const HeaderBytes& bytes) {
  info = {.header_bytes = bytes};
  if (bytes[0] != 0xFF || (bytes[1] & 0xF6) != 0xF0) return false;  // 12 bits of sync, layer 0
  info.version = (bytes[1] & 8) != 0 ? 2 : 4;
  info.has_crc = (bytes[1] & 1) == 0 ? 1 : 0;
  const std::size_t rate_index = bytes[2] >> 2 & 15;
  if (rate_index >= sample_rates_adts.size()) return false;
  info.sample_rate = sample_rates_adts[rate_index];
  const std::size_t layout = (bytes[2] & 1U) << 2 | bytes[3] >> 6U;
  info.channels = static_cast<std::uint8_t>(layout == 7 ? 8 : layout);
  info.channel_mode = layout == 1 ? mono : 1;
  info.frame_length =
      static_cast<std::uint16_t>((bytes[3] & 3) << 11 | bytes[4] << 3 | bytes[5] >> 5);
  // The rate that a frame of 1024 samples of this length stands for. Anything may be true: silence
  // takes next to none, six channels take more than any MPEG frame.
  info.bitrate = static_cast<std::uint16_t>(info.sample_rate * info.frame_length / 128000);
  return info.frame_length >= shortest_adts_frame;
}

}  // namespace

std::span<const std::uint16_t> layer3_bitrates(std::uint8_t version) {
  return std::span(bitrates_of(version, true)).subspan(1, 14);  // between free and invalid
}

bool decode_frame_header(FrameInfo& info, FrameFormat format) {
  const HeaderBytes bytes = info.header_bytes;
  return format == FrameFormat::adts ? decode_adts_header(info, bytes)
                                     : decode_mpeg_header(info, bytes);
}

bool decode_frame_header(FrameInfo& info, std::span<const std::uint8_t> bytes, FrameFormat format) {
  HeaderBytes header = {};
  if (bytes.size() >= header_size) {  // a copy of known size is a matter of two registers
    std::copy_n(bytes.begin(), header_size, header.begin());
  } else {
    std::ranges::copy(bytes, header.begin());
  }
  return format == FrameFormat::adts ? decode_adts_header(info, header)
                                     : decode_mpeg_header(info, header);
}

std::string_view surround_name(std::size_t channels) {
  constexpr std::array<std::string_view, 9> names = {"",    "",    "", "3.0", "4.0",
                                                     "5.0", "5.1", "", "7.1"};
  return channels < names.size() ? names[channels] : "";
}

std::size_t find_sync(std::span<const std::uint8_t> bytes, std::size_t from, std::size_t end) {
  for (; from < end; ++from) {
    const void* const found = std::memchr(bytes.data() + from, 0xFF, end - from);
    if (found == nullptr) return end;
    from = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - bytes.data());
    if (has_sync(bytes, from)) return from;
  }
  return end;
}

SimilarFrames::SimilarFrames(const FrameInfo& frame) {
  if (frame.layer == 0) return;  // an ADTS header tells its length itself
  second_byte_ = frame.header_bytes[1] | 1U;
  rate_index_ = frame.header_bytes[2] >> 2 & 3U;
  lengths_ = frame_lengths[frame.version][frame.layer == 3][rate_index_];
}

std::size_t vbr_header_offset(const FrameInfo& info) {
  if (info.version == 1) return info.channel_mode == mono ? 21 : 36;
  return info.channel_mode == mono ? 13 : 21;
}

std::uint32_t samples_per_frame(const FrameInfo& info) {
  if (info.layer == 0) return 1024 * (1 + (info.header_bytes[6] & 3u));  // ADTS: by its blocks
  return info.layer == 3 && info.version != 1 ? 576 : 1152;
}

std::size_t side_info_size(const FrameInfo& info) { return vbr_header_offset(info) - 4; }

}  // namespace corvelin
