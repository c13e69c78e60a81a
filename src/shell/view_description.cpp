// Places and levels in words.
#include "shell/view_description.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>

#include "audio/level_meter.h"
#include "audio/playback.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"
#include "platform/text.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string time_of(EditPosition pos) {
  return format_time(to_time_scale(pos), stream.avg_bitrate);
}

std::string part_number() {
  return fmt::format("{} {} / {}", ui_text(win, 23), document.current_part + 1, part_count());
}

// The level that a bar shows, in decibels below full scale: the smallest that is as high.
std::string level_of_bar(std::uint8_t bar) {
  std::uint8_t raw = 0;
  while (raw < highest_meter && meter_curve(raw) < bar) ++raw;
  if (raw == 0) return "-∞ dB";
  return fmt::format("{:.0f} dB", 20 * std::log10(raw / double{highest_meter}));
}

}  // namespace

ViewDescription describe_view() {
  if (document.total_size == 0) return {};
  ViewDescription description;
  description.graph =
      fmt::format("{}: {}, {}", ui_text(win, 21), time_of(play_position()), part_number());
  if (has_selection())
    description.graph += fmt::format(", {}: {} - {}", ui_text(win, 22), time_of(selection.sel_beg),
                                     time_of(selection.sel_end));
  description.overview =
      fmt::format("{}: {}, {}", ui_text(win, 20), time_of(document.total_size), part_number());
  const std::u16string& title = document.parts[document.current_part].part_title;
  if (!title.empty()) description.overview += ", " + wide_to_bytes(title, true);
  description.meter = level_of_bar(level_meter.meter_level[1]);
  if (stream.current_frame.channel_mode != mono)
    description.meter = level_of_bar(level_meter.meter_level[0]) + " / " + description.meter;
  return description;
}

}  // namespace corvelin
