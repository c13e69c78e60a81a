// SPDX-License-Identifier: GPL-2.0-or-later
// The graph, layer by layer, each over the one before.
#include "shell/graph_drawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "edit/editor.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::uint8_t border_kinds = sample_is_cut | sample_is_cue;
constexpr std::uint8_t line_flags = border_kinds | sample_is_outside;
constexpr Colour handle_colour = 0x808080;

class GraphDrawing {
 public:
  GraphDrawing(const Editor& editor, EditorView& view, Canvas& canvas)
      : editor_(editor),
        view_(view),
        layout_(view.layout),
        slots_(view.samples.slots),
        canvas_(canvas) {}

  void draw() {
    draw_selection();
    draw_bars(false, settings.rgb_mpeg);
    draw_bars(true, settings.rgb_cuts);
    if (settings.bitrate_graph != 0 && editor_.document.stream.vbr != vbr_constant &&
        layout_.fold == 1)
      draw_bitrates();
    draw_borders();
    draw_handles_and_cursor();
    if (settings.time_marks != 0) draw_time_marks();
  }

 private:
  [[nodiscard]] std::span<const FrameSlot> slots_of(int column) const {
    return slots_.subspan(layout_.first_slot(column), layout_.fold);
  }
  // The first of a column's slots that has one of the flags, or its last one.
  [[nodiscard]] std::size_t slot_with(int column, std::uint8_t flags) const {
    const std::size_t first = layout_.first_slot(column);
    const std::size_t last = first + layout_.fold - 1;
    for (std::size_t i = first; i < last; ++i)
      if ((slots_[i].sample_flags & flags) != 0) return i;
    return last;
  }
  [[nodiscard]] bool has(std::size_t slot, std::uint8_t flags) const {
    return (slots_[slot].sample_flags & flags) != 0;
  }
  [[nodiscard]] Colour border_colour(std::size_t slot) const {
    return has(slot, sample_is_current) ? settings.rgb_actual : settings.rgb_cuts;
  }
  void upright(int x, Colour colour, Pattern pattern) {
    canvas_.fill({x, 0, x + 1, layout_.graph_bottom}, colour, pattern);
  }

  void draw_selection() {
    if (!has_selection(editor_.selection)) return;
    int begin = 0;
    while (begin < layout_.width && !has(slot_with(begin, sample_is_selected), sample_is_selected))
      ++begin;
    if (begin == layout_.width) return;
    if (editor_.selection.sel_beg == editor_.selection.sel_end)
      return upright(begin, settings.rgb_selection, Pattern::dots);

    int end = begin;
    while (end < layout_.width - 1 &&
           has(layout_.first_slot(end) + std::size_t{layout_.fold}, sample_is_selected))
      ++end;
    if (layout_.fold > 1 && end == begin) ++end;
    if (editor_.selection.sel_end >= editor_.document.total_size) end = layout_.width;
    canvas_.fill({begin, 0, end, layout_.graph_bottom}, settings.rgb_selection);
  }

  void draw_bars(bool with_gain, Colour colour) {
    const int bottom = layout_.graph_bottom;
    for (int x = 0; x < layout_.width; ++x) {
      int highest = 0;
      for (const FrameSlot& slot : slots_of(x)) {
        const bool is_changed = (slot.sample_flags & sample_has_gain) != 0;
        if (is_changed == with_gain) highest = std::max<int>(highest, slot.sample_height);
      }
      const int height = highest * bottom / 256;
      if (height > 0) canvas_.fill({x, bottom - height + 1, x + 1, bottom + 1}, colour);
    }
  }

  void draw_bitrates() {
    constexpr int highest_bitrate = 384;
    const int bottom = layout_.graph_bottom;
    for (int x = 0; x < layout_.width; ++x) {
      const int bitrate = slots_of(x)[0].sample_bitrate;
      const int y = bottom - bottom * bitrate / highest_bitrate;
      if (bitrate > 1) canvas_.fill({x, y - 2, x + 1, y + 1}, settings.rgb_vumeter);
    }
  }

  // A slot that spans several columns has its line in the first, unless its neighbour has one too:
  // so the blank places outside of the stream are a block.
  void draw_borders() {
    std::optional<std::size_t> before;
    for (int x = 0; x < layout_.width; ++x) {
      const std::size_t slot = slot_with(x, border_kinds);
      const bool is_new = slot != before || has(slot + 1, line_flags);
      before = slot;
      if (!has(slot, line_flags) || !is_new) continue;
      upright(x, border_colour(slot), has(slot, sample_is_cue) ? Pattern::dots : Pattern::solid);
    }
  }

  void draw_handles_and_cursor() {
    std::optional<std::size_t> last_handle;
    bool has_cursor = false;
    for (int x = 0; x < layout_.width; ++x) {
      const std::size_t handle = slot_with(x, sample_is_border);
      if (has(handle, sample_is_border) && handle != last_handle) {
        draw_handle(x, handle);
        last_handle = handle;
      }
      if (!has_cursor && has(slot_with(x, sample_at_cursor), sample_at_cursor)) {
        upright(x, settings.rgb_cursor, Pattern::dots);
        has_cursor = true;
      }
    }
  }

  void draw_handle(int x, std::size_t slot) {
    constexpr int scale = 192;
    constexpr int label_at = 10;  // pixels from the border
    const auto down = std::int64_t{slots_[slot].sample_handle} * layout_.graph_bottom / scale;
    const int y = static_cast<int>(down) - 4;
    const int height = layout_.small_font_h;
    const int width = canvas_.text(x + 1, y, "   ", {.height = height, .ground = handle_colour});
    Rect visible = {x + 1, y, x + 1 + width, y + height};
    if (editor_.document.kind.layer == 3) {
      const int steps = (scale - slots_[slot].sample_handle) / 2 - 64;
      canvas_.text(
          x + label_at, y, fmt::format(" {:.1f} ", steps * 1.5),
          {.height = height, .colour = border_colour(slot), .ground = settings.rgb_background});
      visible.right = std::min(visible.right, x + label_at);
    }
    view_.handles.push_back(visible);
  }

  void draw_time_marks() {
    std::size_t next = 0;  // a slot that spans several columns is written once
    for (int x = 0; x < layout_.width; ++x) {
      const std::size_t end = layout_.first_slot(x) + std::size_t{layout_.fold};
      for (next = std::max<std::size_t>(next, layout_.first_slot(x)); next < end; ++next) {
        const std::uint32_t second = slots_[next].sample_second;
        if (second != 0 && second % layout_.mark_seconds == 0) draw_time_mark(x, second);
      }
    }
  }

  void draw_time_mark(int x, std::uint32_t second) {
    const std::uint32_t minutes = second / 60;
    const std::string time =
        second < 3600 ? fmt::format("|  {}'{:02}", minutes, second % 60)
                      : fmt::format("|  {}:{:02}'{:02}", minutes / 60, minutes % 60, second % 60);
    canvas_.text(x - 1, layout_.graph_bottom - layout_.small_font_h, time,
                 {.height = layout_.small_font_h, .colour = settings.rgb_cursor});
  }

  const Editor& editor_;
  EditorView& view_;
  const ViewLayout& layout_;
  std::span<const FrameSlot> slots_;
  Canvas& canvas_;
};

}  // namespace

void draw_graph(const Editor& editor, EditorView& view, Canvas& canvas) {
  if (view.layout.view_frames != 0) GraphDrawing(editor, view, canvas).draw();
}

}  // namespace corvelin
