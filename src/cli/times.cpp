// Times by the average rate.
#include "cli/times.h"

#include <algorithm>

#include "model/stream_info.h"
#include "model/time_mapping.h"

namespace corvelin {

double seconds_at(EditPosition pos) {
  return stream.avg_bitrate > 0 ? to_time_scale(pos) * 8.0 / double{stream.avg_bitrate} : 0;
}

double total_seconds() { return seconds_at(document.total_size); }

std::optional<EditPosition> place_at(double seconds) {
  constexpr double rounding = 0.005;  // of a time that is shown with two decimals
  const double total = total_seconds();
  if (seconds < -rounding || seconds > total + rounding) return std::nullopt;
  if (seconds >= total) return document.total_size;
  return std::min(from_time_scale(time_to_position(seconds)), document.total_size);
}

std::string time_text(double seconds) {
  // format_time takes a place and a rate; milliseconds at 8000 bits a second are one byte each.
  return format_time(static_cast<std::uint32_t>(std::clamp(seconds * 1000, 0.0, 4e9)), 8000);
}

}  // namespace corvelin
