// SPDX-License-Identifier: GPL-2.0-or-later
// The measures of the view: how its area is divided among graph, map and meter, and which frames
// stand in which pixel column.
#pragma once

#include <cstdint>

namespace corvelin {

/// All in device pixels. Made anew on every change of the size, the scale or the zoom.
struct ViewLayout {
  int width = 0;
  int height = 0;
  float display_scale = 1;

  int graph_h = 0;       // the band of the graph; the map has the rest
  int graph_bottom = 0;  // its last row
  int meter_top = 0;
  int meter_height = 0;
  int meter_bar_w = 0;
  int meter_pitch = 0;  // from one bar to the other
  int meter_left = 0;
  int small_font_h = 0;
  int name_font_h = 0;

  std::uint32_t view_frames = 0;   // that the graph shows
  std::uint32_t fold = 1;          // frames that share a column
  std::uint32_t mark_seconds = 5;  // between two time marks

  /// The first of the `fold` frames of a pixel column.
  [[nodiscard]] std::uint32_t first_slot(int column) const {
    return static_cast<std::uint32_t>(std::uint64_t{view_frames} *
                                      static_cast<std::uint64_t>(column) /
                                      static_cast<std::uint64_t>(width));
  }
};

/// `zoom` as the setting has it: eighths of a column for each frame, a power of two from 1 to 32.
/// Any other number, as a settings file may have it, counts as the nearest one below.
ViewLayout view_layout(int width, int height, float display_scale, unsigned zoom);

}  // namespace corvelin
