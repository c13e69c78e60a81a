// The level meter: two bars with a peak hold in a 7-bit scale made for the eye, and the margin that
// the loudest sample left to full scale.
#pragma once

#include <array>
#include <cstdint>

namespace corvelin {

/// The highest value of the bars and of a raw level; a hold mark there stands for clipping.
constexpr std::uint8_t highest_meter = 127;

/// Slot 0 is the left channel and slot 1 the right one, or the only one of a mono stream.
struct LevelMeter {
  std::array<std::uint8_t, 2> meter_level = {};       // of the bars
  std::array<std::uint8_t, 2> meter_hold = {};        // of the peak marks
  std::array<std::uint8_t, 2> meter_margin = {1, 1};  // the highest raw level since the last reset
};

extern LevelMeter level_meter;

/// The place of a raw level (the high byte of a sample, 0 to 127) on the bar's compressed scale.
std::uint8_t meter_curve(std::uint8_t raw);

/// The margin starts anew.
void margin_reset();

}  // namespace corvelin
