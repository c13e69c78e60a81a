// SPDX-License-Identifier: GPL-2.0-or-later
// Reading and writing of the three fields.
#include "exchange/cue_time.h"

#include <fmt/format.h>

#include <cstdint>

#include "platform/text/numbers.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

constexpr double cue_frames_per_second = 75;

// Cuts off what stands behind the last colon, as a number. 0 without a colon.
double take_last_field(std::string_view& time) {
  const std::size_t colon = time.rfind(':');
  if (colon == std::string_view::npos) return 0;
  const double field = leading_decimal(time.substr(colon + 1));
  time = time.substr(0, colon);
  return field;
}

}  // namespace

double cue_seconds(std::string_view time) {
  const double frames = take_last_field(time);
  const double seconds = take_last_field(time);
  return leading_decimal(time) * 60 + seconds + frames / cue_frames_per_second;
}

std::string format_cue_time(double seconds) {
  constexpr double lost = 1e-6;  // at most, in the sum of a time: a whole frame stays whole
  const std::uint32_t whole = whole_part(seconds + lost);
  const std::uint32_t frames = whole_part((seconds + lost - whole) * cue_frames_per_second, 74);
  return fmt::format("{:02}:{:02}:{:02}", whole / 60, whole % 60, frames);
}

}  // namespace corvelin
