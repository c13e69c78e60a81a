// Linear resampling.
#include "audio/speed_conversion.h"

#include <algorithm>
#include <cstddef>

namespace corvelin {

float rec_speed_of(double original, double recording) {
  if (!(original > 0) || !(recording > 0)) return 0;
  const auto factor = static_cast<float>(recording / original);
  return factor >= 0.5F && factor <= highest_rec_speed ? factor : 0;
}

void stretch(std::span<const std::int16_t> samples, float speed, unsigned channels,
             std::vector<std::int16_t>& out) {
  const std::size_t values = samples.size() - samples.size() % channels;
  if (speed > highest_rec_speed || values < 2 * std::size_t{channels}) {
    out.assign(samples.begin(), samples.end());
    return;
  }
  const float step = static_cast<float>(channels) / speed;
  const auto total = static_cast<std::size_t>(speed * static_cast<float>(values));
  const std::size_t last_base = values - 2 * std::size_t{channels};  // with a frame behind it
  out.assign(total, 0);
  float pos = 0;
  for (std::size_t at = 0; at + channels <= total; at += channels) {
    auto base = static_cast<std::size_t>(pos);
    base -= base % channels;
    if (base > last_base) base = last_base;
    // A place between two samples is measured in steps, so beyond a factor of 1 the line through
    // the two is followed a little behind the second one: a part of the distortion that the user is
    // told of.
    for (std::size_t c = 0; c < channels; ++c) {
      const float here = samples[base + c];
      const float next = samples[base + channels + c];
      const float value = (pos - static_cast<float>(base)) * (next - here) / step + here;
      out[at + c] = static_cast<std::int16_t>(std::clamp(value, -32768.0F, 32767.0F));
    }
    if (at + channels + 2 < total) pos += step;
  }
}

}  // namespace corvelin
