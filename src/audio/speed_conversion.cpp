// SPDX-License-Identifier: GPL-2.0-or-later
// Resampling by libsamplerate.
#include "audio/speed_conversion.h"

#include <algorithm>
#include <cstddef>

namespace corvelin {

float rec_speed_of(double original, double recording) {
  constexpr float lowest = 0.5F;
  constexpr float highest = 2;
  if (!(original > 0) || !(recording > 0)) return 0;
  const auto factor = static_cast<float>(recording / original);
  return factor >= lowest && factor <= highest ? factor : 0;
}

bool SpeedConversion::begin(float speed, unsigned channels) {
  int error = 0;
  state_.reset(src_new(SRC_SINC_MEDIUM_QUALITY, static_cast<int>(channels), &error));
  speed_ = double{speed};
  channels_ = channels;
  return state_ != nullptr;
}

std::vector<std::int16_t> SpeedConversion::stretch(std::span<const std::int16_t> samples) {
  return convert(samples, false);
}

std::vector<std::int16_t> SpeedConversion::rest() { return convert({}, true); }

std::vector<std::int16_t> SpeedConversion::convert(std::span<const std::int16_t> samples,
                                                   bool is_end) {
  constexpr std::size_t block_frames = 4096;
  std::vector<float> in(std::max<std::size_t>(samples.size(), 1));  // it asks for a place always
  src_short_to_float_array(samples.data(), in.data(), static_cast<int>(samples.size()));
  std::vector<float> out(block_frames * channels_);
  std::vector<std::int16_t> stretched;
  SRC_DATA data = {.data_in = in.data(),
                   .data_out = out.data(),
                   .input_frames = static_cast<long>(samples.size() / channels_),
                   .output_frames = static_cast<long>(block_frames),
                   .end_of_input = is_end ? 1 : 0,
                   .src_ratio = speed_};
  do {
    if (src_process(state_.get(), &data) != 0) break;
    const std::size_t before = stretched.size();
    const std::size_t made = static_cast<std::size_t>(data.output_frames_gen) * channels_;
    stretched.resize(before + made);
    src_float_to_short_array(out.data(), stretched.data() + before, static_cast<int>(made));
    data.data_in += data.input_frames_used * static_cast<long>(channels_);
    data.input_frames -= data.input_frames_used;
  } while (data.output_frames_gen != 0);
  return stretched;
}

}  // namespace corvelin
