// SPDX-License-Identifier: GPL-2.0-or-later
// The arithmetic of the view's measures.
#include "shell/view_layout.h"

#include <algorithm>
#include <bit>

namespace corvelin {

namespace {

int truncated(float value) { return static_cast<int>(value); }

std::uint32_t mark_interval(unsigned zoom) {
  switch (zoom) {
    case 1:
      return 30;
    case 2:
      return 20;
    case 4:
      return 10;
    case 8:
      return 5;
    case 16:
      return 2;
    default:
      return 1;
  }
}

}  // namespace

ViewLayout view_layout(int width, int height, float display_scale, unsigned zoom) {
  zoom = std::bit_floor(std::clamp(zoom, 1U, 32U));
  ViewLayout layout = {
      .width = std::max(width, 0), .height = std::max(height, 0), .display_scale = display_scale};
  const float scale = display_scale;
  layout.graph_h = layout.height * 87 / 100;
  layout.graph_bottom = layout.graph_h - 1;
  layout.meter_top = layout.graph_h / 16;
  layout.meter_height = layout.graph_h - 2 * layout.meter_top;
  layout.meter_bar_w = layout.meter_height / 12;
  const auto bar = static_cast<float>(layout.meter_bar_w);
  layout.meter_pitch = truncated(bar + 2 * scale);
  layout.meter_left = truncated(static_cast<float>(layout.width) - 10 * scale - 2 * bar);
  layout.small_font_h = truncated(15 * scale);
  layout.name_font_h = truncated(25 * scale);
  layout.view_frames = static_cast<std::uint32_t>(layout.width) * 8 / zoom;
  layout.fold = zoom < 8 ? 8 / zoom : 1;
  layout.mark_seconds = mark_interval(zoom);
  return layout;
}

}  // namespace corvelin
