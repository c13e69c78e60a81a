// SPDX-License-Identifier: GPL-2.0-or-later
// The arithmetic of times.
#include "model/time_mapping.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/text/numbers.h"
#include "platform/text/text.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr double seconds_per_minute = 60;
constexpr double seconds_per_hour = 3600;
constexpr int toc_scale = 256;  // what an entry of the seek table counts for the whole stream

// The table belongs to the one file that was opened: after an append it says nothing any more. Cuts
// leave it in use, over the length that remains.
bool is_corrected(const Document& document) {
  return settings.use_toc != 0 && (document.stream.vbr & vbr_toc_usable) != 0 &&
         file_count(document) < 2 && document.total_size != 0;
}

EditPosition as_position(double pos) { return whole_part(pos, highest_position); }

// Takes a number and the mark behind it off `time`. 0 without the mark.
double take_number(std::string_view& time, char mark) {
  const std::size_t end = time.find(mark);
  if (end == std::string_view::npos) return 0;
  const double number = leading_decimal(time.substr(0, end));
  time.remove_prefix(end + 1);
  return number;
}

// Takes the hours and minutes off `time` and returns them in seconds.
double take_hours_and_minutes(std::string_view& time) {
  const double hours = take_number(time, ':');
  const double minutes = take_number(time, '\'');
  return hours * seconds_per_hour + minutes * seconds_per_minute;
}

std::string format_milliseconds(std::uint32_t ms, SecondsForm form) {
  constexpr std::uint32_t ms_per_minute = 60000;
  const std::uint32_t minutes = ms / ms_per_minute;
  const double seconds = ms % ms_per_minute / 1000.0;
  std::string text = minutes < 60 ? fmt::format("{}'", minutes)
                                  : fmt::format("{}:{:02}'", minutes / 60, minutes % 60);
  if (form == SecondsForm::recording) {
    text += fmt::format("{:4.1f}", seconds);
  } else if (settings.show_milisec != 0) {
    text += fmt::format("{:6.3f}", seconds);
  } else {
    text += fmt::format("{:5.2f}", seconds);
  }
  std::ranges::replace(text, ' ', '0');
  return text;
}

}  // namespace

std::uint32_t to_time_scale(const Document& document, EditPosition pos) {
  if (pos == no_position || !is_corrected(document)) return pos;
  const double total = document.total_size;
  const double x = pos * double{toc_scale} / total;
  if (x >= toc_scale + 1) return pos;  // behind the end
  const auto entry =
      std::ranges::find_if(document.stream.toc, [x](std::uint8_t at) { return x <= at; });
  const auto i = entry - document.stream.toc.begin();
  const double high = entry == document.stream.toc.end() ? toc_scale : *entry;
  const double low = i <= 1 ? 0 : *(entry - 1);
  const double fraction = high == low ? 0 : (x - high) / (high - low);  // -1 to 0
  return whole_part((static_cast<double>(i) + fraction) * total / 100);
}

EditPosition from_time_scale(const Document& document, std::uint32_t scaled) {
  if (!is_corrected(document)) return scaled;
  constexpr std::uint32_t last = 99;
  const double total = document.total_size;
  const double y = scaled * 100.0 / total;
  const std::uint32_t i = whole_part(y, last);
  const double high = i == last ? toc_scale : document.stream.toc[i + 1];
  const double low = document.stream.toc[i];
  return as_position(((y - i) * (high - low) + low) * total / toc_scale);
}

std::string format_time(std::uint32_t pos, double rate, SecondsForm form) {
  return format_milliseconds(rate > 0 ? whole_part(pos / rate * 8000) : 0, form);
}

std::string format_seconds(double seconds) {
  return format_milliseconds(whole_part(seconds * 1000 + 0.5), SecondsForm::display);
}

std::string shown_time(const Document& document, EditPosition pos) {
  return format_time(to_time_scale(document, pos), double{document.stream.avg_bitrate});
}

std::uint32_t time_to_position(const Document& document, double seconds) {
  return as_position(document.stream.avg_bitrate * 0.125 * seconds);
}

std::uint32_t parse_time(const Document& document, std::string_view& text, char terminator) {
  text.remove_prefix(std::min(text.find_first_of("0123456789.-()"), text.size()));
  const std::size_t end = text.find(terminator);
  std::string_view time = text.substr(0, end);
  double seconds = take_hours_and_minutes(time);
  if (end == std::string_view::npos) {
    text = time;
  } else {
    seconds += leading_decimal(time);
    text.remove_prefix(end + 1);
  }
  return time_to_position(document, seconds);
}

}  // namespace corvelin
