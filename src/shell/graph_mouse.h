// SPDX-License-Identifier: GPL-2.0-or-later
// The mouse on the view: selecting, moving the cursor, dragging the grey handles of levels and
// borders, and seeking in the map. Points are device pixels of the view.
#pragma once

#include <cstdint>

#include "edit/commands.h"
#include "edit/selection_commands.h"
#include "shell/editor_view.h"

namespace corvelin {

struct Editor;

struct GraphMouse {
  bool on_handle = false;        // kept up to date while no button is held; the cursor is a hand
  std::uint16_t level_drag = 0;  // 0, or 1 + the part whose level is dragged; the number behind the
                                 // last part stands for the level at the stream's end
  std::uint16_t split_drag = 0;  // 0, or 1 + the part whose start is dragged
  bool overview_drag = false;    // seeking in the map
};

// Each returns whether the view and its texts have to be brought up to date. Without a document
// nothing happens.

bool press_mouse(Editor& editor, GraphMouse& mouse, const EditorView& view, MouseButtons buttons,
                 int x, int y);
bool move_mouse(Editor& editor, GraphMouse& mouse, const EditorView& view, MouseButtons buttons,
                int x, int y);

/// Either button went up: a drag is over.
bool release_mouse(Editor& editor, GraphMouse& mouse);

/// What a step of the wheel means: skips, with Ctrl the zoom, with Ctrl and Shift the volume.
CommandId wheel_command(bool is_up, bool shift, bool ctrl);

}  // namespace corvelin
