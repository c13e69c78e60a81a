// SPDX-License-Identifier: GPL-2.0-or-later
// The level meter: two bars with a peak hold in a 7-bit scale made for the eye, and the margin that
// the loudest sample left to full scale. Fed with every buffer that was heard or recorded.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace corvelin {

/// The highest value of the bars and of a raw level; a hold mark there stands for clipping.
constexpr std::uint8_t highest_meter = 127;

/// Slot 0 is the left channel and slot 1 the right one, or the only one of a mono stream. A raw
/// level is the magnitude of a sample's high byte, so 1/128 of full scale.
struct LevelMeter {
  std::array<std::uint8_t, 2> meter_level = {};       // of the bars
  std::array<std::uint8_t, 2> meter_last = {};        // of the bars at the buffer before
  std::array<std::uint8_t, 2> meter_hold = {};        // of the peak marks
  std::array<std::uint8_t, 2> meter_hold_count = {};  // buffers until a mark falls
  std::array<std::uint8_t, 2> meter_margin = {1, 1};  // the highest raw level since the last reset
  std::uint8_t meter_overall = 0;                     // the highest raw level of the last buffer
  std::int32_t meter_decay = 0;  // how fast a bar may fall: tenths of its scale a buffer
};

/// The place of a raw level (0 to 127) on the bar's compressed scale.
std::uint8_t meter_curve(std::uint8_t raw);

/// Takes the levels of a buffer of 16-bit samples of 1 or 2 channels. A bar that falls is slow at
/// first. One too short to tell anything is passed over. Clipping in a recording sounds a beep if
/// `peakbeep` is set.
enum class MeterUse : std::uint8_t { playing, recording };
void level_meter_feed(LevelMeter& meter, std::span<const std::uint8_t> pcm, int channels,
                      MeterUse use);

/// Bars and marks down. The margin stays.
void level_meter_clear(LevelMeter& meter);

/// The margin starts anew.
void margin_reset(LevelMeter& meter);

}  // namespace corvelin
