// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that set and move the selection. Positions from the user's side have passed through
// the frame locator.
#pragma once

#include "edit/outcome.h"
#include "model/document.h"

namespace corvelin {

struct Editor;

void set_begin(Editor& editor);  // of the selection, at the place of the listener
void set_end(Editor& editor);
void select_all(Editor& editor);
void select_current_part(Editor& editor);
void select_to_start(Editor& editor);  // from the stream's start to the cursor
void select_to_end(Editor& editor);    // from the cursor to the stream's end
Result remove_selection(Editor& editor);

// Moving by one frame, of a point at the cursor when there is no selection.
void move_begin_left(Editor& editor);
void move_begin_right(Editor& editor);
void move_end_left(Editor& editor);
void move_end_right(Editor& editor);
void move_selection_left(Editor& editor);
void move_selection_right(Editor& editor);

/// The input focus came to the selection's field: without a selection it becomes a point at the
/// listener's place, so that there are times to edit. Takes no undo step.
void begin_selection_for_field(Editor& editor);

/// Selects from one frame start to another, in one undo step.
void select(Editor& editor, EditPosition begin, EditPosition end);

/// What is held while the mouse selects.
struct MouseButtons {
  bool left = false;
  bool right = false;
  bool shift = false;
  bool ctrl = false;
};

/// A press in the graph, or a move with a button held, at the frame start `pos`. The setting
/// `mouse_method` tells whether the buttons stand for the two ends, or the left one begins anew and
/// everything else moves the nearer end. With Ctrl the cursor goes there and that is all.
void mouse_select(Editor& editor, EditPosition pos, MouseButtons buttons, bool is_press);

}  // namespace corvelin
