// SPDX-License-Identifier: GPL-2.0-or-later
// Puts a recording that was played at the wrong speed back to its true length.
#pragma once

#include <samplerate.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace corvelin {

/// The factor for a record of speed `original` that was played at `recording`: 0.5 to 2, or 0 for
/// none, where it lies outside or a speed is 0.
float rec_speed_of(double original, double recording);

/// A run of blocks of interleaved samples, each of which goes on where the one before ended.
class SpeedConversion {
 public:
  /// Stretches by `speed` from now on. False without the memory for it.
  bool begin(float speed, unsigned channels);

  /// The samples that are known by now. They are a few milliseconds behind those that came in.
  std::vector<std::int16_t> stretch(std::span<const std::int16_t> samples);

  /// The last ones, behind which nothing follows.
  std::vector<std::int16_t> rest();

 private:
  std::vector<std::int16_t> convert(std::span<const std::int16_t> samples, bool is_end);

  std::unique_ptr<SRC_STATE, SRC_STATE* (*)(SRC_STATE*)> state_ = {nullptr, src_delete};
  double speed_ = 1;
  unsigned channels_ = 2;
};

}  // namespace corvelin
