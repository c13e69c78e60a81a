// SPDX-License-Identifier: GPL-2.0-or-later
// From mouse events to edits.
#include "shell/graph_mouse.h"

#include <algorithm>
#include <cstddef>

#include "audio/playback.h"
#include "edit/drags.h"
#include "edit/editor.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/time_mapping.h"

namespace corvelin {

namespace {

bool is_in_view(const ViewLayout& layout, int x, int y) {
  return x >= 0 && y >= 0 && x <= layout.width && y <= layout.height;
}

void hit_test(GraphMouse& mouse, const EditorView& view, int x, int y) {
  mouse.on_handle = std::ranges::any_of(
      view.handles, [x, y](const Rect& handle) { return handle.contains(x, y); });
}

// The frame in the column at `x`.
EditPosition frame_under(Editor& editor, const EditorView& view, int x) {
  const std::vector<FrameSlot>& slots = view.samples.slots;
  if (slots.empty() || view.layout.width == 0) return no_position;
  const std::size_t slot = std::min<std::size_t>(view.layout.first_slot(x), slots.size() - 1);
  const EditPosition pos = slots[slot].sample_pos;
  return locate_frame(editor.document, part_at(editor.document, pos), pos,
                      editor.selection.current_frame);
}

void drag_level_to(Editor& editor, const GraphMouse& mouse, const ViewLayout& layout, int y) {
  constexpr int highest = 32;
  constexpr int lowest = -60;
  constexpr int steps = 96;  // over the band
  if (layout.graph_h == 0) return;
  const auto gain =
      static_cast<std::int16_t>(std::clamp(highest - y * steps / layout.graph_h, lowest, highest));
  drag_level(editor, static_cast<PartIndex>(mouse.level_drag - 1), gain);
}

bool take_handle(Editor& editor, GraphMouse& mouse, EditPosition pos, bool is_left) {
  const bool is_end = pos >= editor.document.total_size;
  const auto part = static_cast<std::uint16_t>(
      1 + (is_end ? part_count(editor.document) : part_at(editor.document, pos)));
  if (is_left) {
    if (!take_level(editor)) return false;
    mouse.level_drag = part;
  } else {
    if (is_end) return false;
    take_border(editor);
    mouse.split_drag = part;
  }
  return true;
}

bool graph_mouse(Editor& editor, GraphMouse& mouse, const EditorView& view, MouseButtons buttons,
                 int x, int y, bool is_press) {
  constexpr int split_offset = 4;  // pixels: the handle stands beside its border
  const ViewLayout& layout = view.layout;
  if (mouse.split_drag != 0) x -= split_offset;
  if (!is_in_view(layout, x, y)) return false;
  if (mouse.level_drag != 0) {
    drag_level_to(editor, mouse, layout, y);
    return true;
  }
  if (buttons.left && is_press && y > layout.graph_h) mouse.overview_drag = true;
  if (mouse.overview_drag) {
    const std::uint64_t pos = std::uint64_t{editor.document.total_size} * static_cast<unsigned>(x) /
                              static_cast<unsigned>(std::max(layout.width, 1));
    seek_to(editor.playback, from_time_scale(editor.document, static_cast<std::uint32_t>(pos)));
    return true;
  }
  const EditPosition pos = frame_under(editor, view, x);
  if (pos == no_position) return false;
  if (mouse.split_drag != 0) {
    drag_border(editor, static_cast<PartIndex>(mouse.split_drag - 1), pos);
    return true;
  }
  point_at(editor, pos);
  if (buttons.ctrl) {
    seek_to(editor.playback, pos);
    return true;
  }
  if (is_press && mouse.on_handle) return take_handle(editor, mouse, pos, buttons.left);
  if (buttons.left || buttons.right) mouse_select(editor, pos, buttons, is_press);
  return true;
}

}  // namespace

bool press_mouse(Editor& editor, GraphMouse& mouse, const EditorView& view, MouseButtons buttons,
                 int x, int y) {
  if (editor.document.total_size == 0) return false;
  hit_test(mouse, view, x, y);
  return graph_mouse(editor, mouse, view, buttons, x, y, true);
}

bool move_mouse(Editor& editor, GraphMouse& mouse, const EditorView& view, MouseButtons buttons,
                int x, int y) {
  if (editor.document.total_size == 0) return false;
  if (buttons.left || buttons.right) return graph_mouse(editor, mouse, view, buttons, x, y, false);
  if (!buttons.shift && !buttons.ctrl) hit_test(mouse, view, x, y);
  return false;
}

bool release_mouse(Editor& editor, GraphMouse& mouse) {
  const GraphMouse held = mouse;
  mouse = {.on_handle = held.on_handle};
  const bool was_level = held.level_drag != 0;
  if (editor.document.parts.empty() || (!was_level && held.split_drag == 0)) return false;
  if (was_level) {
    drop_level(editor, static_cast<PartIndex>(held.level_drag - 1));
  } else {
    drop_border(editor);
  }
  return was_level;
}

CommandId wheel_command(bool is_up, bool shift, bool ctrl) {
  if (ctrl && shift) return is_up ? command::volume_up : command::volume_down;
  if (ctrl) return is_up ? command::zoom_in : command::zoom_out;
  if (shift) return is_up ? command::skip_back_large : command::skip_forward_large;
  return is_up ? command::skip_back_small : command::skip_forward_small;
}

}  // namespace corvelin
