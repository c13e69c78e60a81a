// The scale of the meter.
#include "audio/level_meter.h"

#include <cmath>

namespace corvelin {

LevelMeter level_meter;

std::uint8_t meter_curve(std::uint8_t raw) {
  return static_cast<std::uint8_t>((1 - std::exp(raw / -60.0)) * 144);
}

void margin_reset() { level_meter.meter_margin = {1, 1}; }  // 1: the text takes its logarithm

}  // namespace corvelin
