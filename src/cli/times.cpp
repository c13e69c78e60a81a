// SPDX-License-Identifier: GPL-2.0-or-later
// The choice between the two kinds of time.
#include "cli/times.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "edit/editor.h"
#include "model/exact_time.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"

namespace corvelin {

namespace {

double scaled_seconds(const Document& document, EditPosition pos) {
  return document.stream.avg_bitrate > 0
             ? to_time_scale(document, pos) * 8.0 / double{document.stream.avg_bitrate}
             : 0;
}

}  // namespace

bool uses_display_scale = false;

double seconds_at(const Document& document, EditPosition pos) {
  return uses_display_scale ? scaled_seconds(document, pos) : exact_seconds(document, pos);
}

double total_seconds(const Document& document) { return seconds_at(document, document.total_size); }

std::optional<EditPosition> place_at(const Document& document, double seconds) {
  constexpr double rounding = 0.0005;        // of a time in milliseconds
  constexpr double coarse_rounding = 0.005;  // of one with two decimals, as the desktop shows it
  const double total = total_seconds(document);
  if (seconds < -coarse_rounding || seconds > total + coarse_rounding) return std::nullopt;
  if (seconds >= total) return document.total_size;
  if (!uses_display_scale) return exact_place(document, seconds - rounding);
  return std::min(from_time_scale(document, time_to_position(document, seconds)),
                  document.total_size);
}

std::string time_text(double seconds) {
  constexpr double longest = 1e9;
  const auto ms = static_cast<std::uint64_t>(std::lround(std::clamp(seconds, 0.0, longest) * 1000));
  const std::uint64_t minutes = ms / 60000;
  const std::string front = minutes < 60 ? fmt::format("{}", minutes)
                                         : fmt::format("{}:{:02}", minutes / 60, minutes % 60);
  return fmt::format("{}'{:02}.{:03}", front, ms / 1000 % 60, ms % 1000);
}

}  // namespace corvelin
