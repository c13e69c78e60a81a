// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of loudness, and the arithmetic of the graph's heights.
#include "frames/frame_loudness.h"

#include <algorithm>
#include <numeric>

#include "frames/frame_gain.h"

namespace corvelin {

namespace {

constexpr std::size_t adts_header_bits = 56;
constexpr std::size_t crc_bits = 16;

// The bits of a channel pair that shares one window, up to the gain of its first channel.
void skip_common_window(std::span<const std::uint8_t> frame, std::size_t& bit_pos,
                        std::uint32_t sample_rate) {
  constexpr unsigned eight_short_windows = 2;
  const unsigned most_bands = sample_rate >= 32000 ? 40 : 41;  // with a predictor
  ++bit_pos;
  const unsigned window_sequence = read_bits(frame, bit_pos, 2);
  ++bit_pos;
  unsigned groups = 1;
  unsigned max_sfb = 0;
  if (window_sequence == eight_short_windows) {
    max_sfb = read_bits(frame, bit_pos, 4);
    for (int i = 0; i < 7; ++i)
      if (read_bits(frame, bit_pos, 1) == 0) ++groups;
  } else {
    max_sfb = read_bits(frame, bit_pos, 6);
    const bool has_predictor = read_bits(frame, bit_pos, 1) != 0;
    if (has_predictor) {
      const bool has_reset = read_bits(frame, bit_pos, 1) != 0;
      if (has_reset) bit_pos += 5;
      bit_pos += std::min(max_sfb, most_bands);
    }
  }
  const bool has_mask = read_bits(frame, bit_pos, 2) == 1;
  if (has_mask) bit_pos += std::size_t{groups} * max_sfb;
}

FrameLoudness layer3_gains(std::span<const std::uint8_t> frame, const FrameInfo& info,
                           std::uint16_t gain_bit) {
  FrameLoudness loudness;
  GainPositions positions = gain_positions(info);
  if (gain_bit != 0) positions[0] = gain_bit;
  for (const std::uint16_t position : positions) {
    std::size_t bit_pos = position;
    if (position != 0)
      loudness.values[loudness.count++] = static_cast<std::uint8_t>(
          read_bits(frame, bit_pos, 4) << 4 | read_bits(frame, bit_pos, 4));
  }
  return loudness;
}

// The louder a frame of Layer II is, the lower are the bytes of its scale factors.
FrameLoudness layer2_bytes(std::span<const std::uint8_t> frame) {
  constexpr std::size_t from = 28;
  constexpr std::size_t count = 10;
  constexpr unsigned silence = 160;
  if (frame.size() < from + count) return {};
  const auto bytes = frame.subspan(from, count);
  const unsigned mean = std::accumulate(bytes.begin(), bytes.end(), 0U) / unsigned{count};
  return {1, {static_cast<std::uint8_t>(mean < silence ? silence - mean : 0)}};
}

std::uint8_t as_height(double height) {
  return static_cast<std::uint8_t>(std::clamp(height, 0.0, 255.0));
}

}  // namespace

std::uint16_t read_bits(std::span<const std::uint8_t> data, std::size_t& bit_pos, unsigned count) {
  const std::size_t at = bit_pos / 8;
  const auto byte_at = [data](std::size_t i) { return i < data.size() ? data[i] : 0U; };
  const unsigned word = byte_at(at) << 8 | byte_at(at + 1);
  const unsigned below = 16 - static_cast<unsigned>(bit_pos % 8) - count;
  bit_pos += count;
  return static_cast<std::uint16_t>(word >> below & ((1U << count) - 1));
}

std::uint8_t aac_global_gain(std::span<const std::uint8_t> frame, std::size_t bit_pos,
                             std::uint32_t sample_rate) {
  constexpr unsigned single_channel = 0;
  constexpr unsigned channel_pair = 1;
  const unsigned element = read_bits(frame, bit_pos, 3);
  if (element == single_channel) bit_pos += 4;
  if (element == channel_pair) {
    bit_pos += 4;
    const bool has_common_window = read_bits(frame, bit_pos, 1) != 0;
    if (has_common_window) skip_common_window(frame, bit_pos, sample_rate);
  }
  return static_cast<std::uint8_t>(read_bits(frame, bit_pos, 8));
}

FrameLoudness measure_loudness(std::span<const std::uint8_t> frame, const FrameInfo& info,
                               unsigned layer, std::uint16_t gain_bit) {
  if (layer == 3) return layer3_gains(frame, info, gain_bit);
  if (layer == 2) return layer2_bytes(frame);
  const std::size_t block = adts_header_bits + (info.has_crc != 0 ? crc_bits : 0);
  return {1, {aac_global_gain(frame, block, info.sample_rate)}};
}

std::uint8_t GraphHeights::layer3(const FrameLoudness& loudness, int gain, unsigned level) {
  constexpr std::uint8_t highest_gain = 208;
  if (loudness.count == 0) return 0;
  int sum = gain * loudness.count;
  for (std::size_t i = 0; i < loudness.count; ++i) {
    if (loudness.values[i] <= highest_gain) last_gain_ = loudness.values[i];
    sum += last_gain_;
  }
  const double steps = (static_cast<double>(sum) / loudness.count - 90) / 14;
  return as_height(steps * steps * steps + level - 160);
}

std::uint8_t GraphHeights::layer2(const FrameLoudness& loudness, unsigned level) {
  // Below 0 it wraps around, so that the lowest graph levels show silence as the highest bar.
  const auto raised = static_cast<std::uint16_t>(level + 2U * loudness.values[0] - 60);
  const unsigned height = std::min<unsigned>(raised, 255);
  last_height_ = static_cast<std::uint8_t>((height + last_height_) / 2);
  return last_height_;
}

std::uint8_t GraphHeights::aac(const FrameLoudness& loudness, unsigned level) {
  const double steps = (loudness.values[0] - 110.0 + level / 7) / 13;  // NOLINT: whole sevenths
  return as_height(steps * steps * steps);
}

}  // namespace corvelin
