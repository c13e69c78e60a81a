// Puts a recording that was played at the wrong speed back to its true length, by a linear
// resampling of each block and nothing more.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace corvelin {

/// The highest factor that stretches.
constexpr float highest_rec_speed = 2.0F;

/// The factor for a record of speed `original` that was played at `recording`: 0.5 to 2, or 0 for
/// none, where it lies outside or a speed is 0.
float rec_speed_of(double original, double recording);

/// Stretches interleaved samples by `speed` into `out`. There is no memory between blocks: each
/// begins anew at its first sample. A factor above the highest leaves the samples as they are.
void stretch(std::span<const std::int16_t> samples, float speed, unsigned channels,
             std::vector<std::int16_t>& out);

}  // namespace corvelin
