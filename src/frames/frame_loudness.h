// SPDX-License-Identifier: GPL-2.0-or-later
// How loud a frame is, guessed from what lies plainly in it, without decoding: the `global_gain`
// fields of Layer III, the first gain of an AAC raw data block (ISO/IEC 13818-7, 6.3), a few bytes
// of the sample data of Layer II.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "frames/frame_header.h"

namespace corvelin {

/// The values that the guess goes by: one for each `global_gain` field of Layer III, one for the
/// others, none for a frame that is too short.
struct FrameLoudness {
  std::uint8_t count = 0;
  std::array<std::uint8_t, 4> values = {};
};

/// `layer` is that of the stream, by which the heights are made, whatever a single frame says.
/// `gain_bit` is for looking at other fields of Layer III: where the first value lies in the place
/// of the first `global_gain`, in bits from the frame's start; 0 for that itself.
FrameLoudness measure_loudness(std::span<const std::uint8_t> frame, const FrameInfo& info,
                               unsigned layer, std::uint16_t gain_bit = 0);

/// The next `count` bits at `bit_pos`, highest first, and moves `bit_pos` behind them. They lie
/// within two bytes. What lies behind the end reads as 0.
std::uint16_t read_bits(std::span<const std::uint8_t> data, std::size_t& bit_pos, unsigned count);

/// The first `global_gain` of the raw data block that begins at `bit_pos`: that of the first
/// channel, unless the block begins with something that is no channel.
std::uint8_t aac_global_gain(std::span<const std::uint8_t> frame, std::size_t bit_pos,
                             std::uint32_t sample_rate);

/// The heights of the graph's bars, 0 to 255, frame by frame in order: each depends on those
/// before. `level` is the setting `graph_level`.
class GraphHeights {
 public:
  /// Layer III. `gain` is the level in steps that an edit adds to every field. An impossible value
  /// of a field is replaced by the one in front of it, so that it leaves no spike in the graph.
  std::uint8_t layer3(const FrameLoudness& loudness, int gain, unsigned level);

  /// Layer II, smoothed over frames. Shows limited information.
  std::uint8_t layer2(const FrameLoudness& loudness, unsigned level);

  static std::uint8_t aac(const FrameLoudness& loudness, unsigned level);

 private:
  std::uint8_t last_gain_ = 0;
  std::uint8_t last_height_ = 0;
};

}  // namespace corvelin
