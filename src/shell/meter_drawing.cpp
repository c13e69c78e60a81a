// SPDX-License-Identifier: GPL-2.0-or-later
// Scale, bars and peak marks of the level meter.
#include "shell/meter_drawing.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "audio/level_meter.h"
#include "audio/recorder.h"
#include "edit/editor.h"
#include "model/stream_info.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

// Bars and marks stand on the row `bottom`; a value of 127 reaches the meter's top.
int row_of(const ViewLayout& layout, int value) {
  const int bottom = layout.meter_top + layout.meter_height;
  return bottom - value * layout.meter_height / highest_meter;
}

// Of labels that would run into each other, as in a low window with a large font, the first one is
// written.
class ScaleLabels {
 public:
  ScaleLabels(const ViewLayout& layout, int right, Canvas& canvas)
      : height_(layout.small_font_h), right_(right), canvas_(canvas) {}

  void write(int y, std::string_view text) {
    const int room = height_ * 3 / 4;  // what digits have of a line
    if (std::ranges::any_of(written_, [&](int other) { return std::abs(other - y) < room; }))
      return;
    written_.push_back(y);
    canvas_.text(right_, y - height_ / 2, text,
                 {.height = height_, .colour = settings.rgb_vumeter, .align = TextAlign::right});
  }

 private:
  int height_;
  int right_;
  Canvas& canvas_;
  std::vector<int> written_;
};

void draw_scale(const ViewLayout& layout, int left, int right, Canvas& canvas) {
  constexpr struct {
    std::uint8_t raw;
    std::string_view label;
  } marks[] = {{65, "-6"}, {33, "-12"}, {17, "-18"}};
  constexpr int label_gap = 10;  // pixels
  constexpr int tick = 6;        // pixels
  const Colour colour = settings.rgb_vumeter;
  const int bottom = row_of(layout, 0);
  ScaleLabels labels(layout, left - label_gap, canvas);
  labels.write(layout.meter_top, "[dB]   0");
  labels.write(bottom, "-48");
  for (const auto& mark : marks) {
    const int y = row_of(layout, meter_curve(mark.raw)) - 1;
    canvas.fill({left, y, right, y + 1}, colour);
    labels.write(y, mark.label);
  }
  canvas.fill({left - 1 - tick, bottom, left - 1, bottom + 1}, colour);
}

}  // namespace

bool has_mono_meter(const Editor& editor) {
  return editor.recorder.is_armed ? editor.recorder.channels == 1
                                  : editor.document.kind.channel_mode == mono;
}

void draw_meter(const Editor& editor, const ViewLayout& layout, Canvas& canvas) {
  const bool is_mono = has_mono_meter(editor);
  const int left = layout.meter_left + (is_mono ? layout.meter_pitch : 0);
  const int right = layout.meter_left + layout.meter_pitch + layout.meter_bar_w;
  const int bottom = layout.meter_top + layout.meter_height;
  outline(canvas, {left - 1, layout.meter_top - 1, right + 1, bottom + 2}, settings.rgb_vumeter);
  if (settings.db_scale != 0) draw_scale(layout, left, right, canvas);

  for (std::size_t slot = is_mono ? 1 : 0; slot < 2; ++slot) {
    const int x = layout.meter_left + static_cast<int>(slot) * layout.meter_pitch;
    const int level = row_of(layout, editor.level_meter.meter_level[slot]);
    const int hold = row_of(layout, editor.level_meter.meter_hold[slot]);
    canvas.fill({x, level, x + layout.meter_bar_w, bottom + 1}, settings.rgb_vumeter);
    // Clipping is shown while something can be done about it.
    const bool is_clipping =
        editor.recorder.is_armed && editor.level_meter.meter_hold[slot] == highest_meter;
    canvas.fill({x, hold, x + layout.meter_bar_w, hold + 2},
                is_clipping ? settings.rgb_cursor : settings.rgb_vumeter);
  }
  if (editor.recorder.is_armed && editor.recorder.rec_level_on) {
    const int threshold =
        row_of(layout, meter_curve(static_cast<std::uint8_t>(settings.rec_threshold & 0xFF)));
    canvas.fill({left, threshold, right, threshold + 2}, settings.rgb_cursor);
  }
}

}  // namespace corvelin
