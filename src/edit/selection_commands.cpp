// SPDX-License-Identifier: GPL-2.0-or-later
// Selecting.
#include "edit/selection_commands.h"

#include "audio/playback.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

// Sets both ends as they are. The cue flag stays, so that the next cut does what the last was to
// do.
void select_range(Editor& editor, EditPosition begin, EditPosition end) {
  editor.selection.sel_beg = begin;
  editor.selection.sel_end = end;
}

EditPosition frame_after(Editor& editor, EditPosition frame) {
  return next_frame_in(editor.document, part_at(editor.document, frame), frame,
                       editor.selection.current_frame);
}

void begin_left(Editor& editor) {
  set_sel_begin(
      editor.document, editor.selection,
      frame_before(editor.document, editor.selection.sel_beg, editor.selection.current_frame));
}
void begin_right(Editor& editor) {
  set_sel_begin(editor.document, editor.selection, frame_after(editor, editor.selection.sel_beg));
}
void end_left(Editor& editor) {
  set_sel_end(
      editor.document, editor.selection,
      frame_before(editor.document, editor.selection.sel_end, editor.selection.current_frame));
}
void end_right(Editor& editor) {
  set_sel_end(editor.document, editor.selection, frame_after(editor, editor.selection.sel_end));
}

bool is_nearer_to_end(const Editor& editor, EditPosition pos) {
  if (editor.selection.sel_beg == no_position || pos < editor.selection.sel_beg) return false;
  const EditPosition to_end = pos < editor.selection.sel_end ? editor.selection.sel_end - pos
                                                             : pos - editor.selection.sel_end;
  return to_end <= pos - editor.selection.sel_beg;
}

// Moves the end that the button stands for, or the nearer one.
void drag_ends(Editor& editor, EditPosition pos, MouseButtons buttons) {
  if (settings.mouse_method == 0) {
    if (buttons.left) set_sel_begin(editor.document, editor.selection, pos);
    if (buttons.right) set_sel_end(editor.document, editor.selection, pos);
  } else if (is_nearer_to_end(editor, pos)) {
    set_sel_end(editor.document, editor.selection, pos);
  } else {
    set_sel_begin(editor.document, editor.selection, pos);
  }
}

}  // namespace

void set_begin(Editor& editor) {
  set_sel_begin(
      editor.document, editor.selection,
      frame_at(editor.document, play_position(editor.playback), editor.selection.current_frame));
}

void set_end(Editor& editor) {
  set_sel_end(
      editor.document, editor.selection,
      frame_at(editor.document, play_position(editor.playback), editor.selection.current_frame));
}

void select_all(Editor& editor) { select_range(editor, 0, editor.document.total_size); }

void select_current_part(Editor& editor) {
  select_range(editor, editor.document.parts[editor.document.current_part].part_beg,
               part_end(editor.document, editor.document.current_part));
}

void select_to_start(Editor& editor) { select_range(editor, 0, editor.selection.cursor); }

void select_to_end(Editor& editor) {
  select_range(editor, editor.selection.cursor, editor.document.total_size);
}

Result remove_selection(Editor& editor) {
  if (editor.selection.sel_beg == no_position && editor.selection.sel_end == no_position)
    return Result::nothing;
  clear_selection(editor.selection);
  return Result::done;
}

void move_begin_left(Editor& editor) {
  ensure_selection(editor.selection, editor.selection.cursor);
  begin_left(editor);
}

void move_begin_right(Editor& editor) {
  ensure_selection(editor.selection, editor.selection.cursor);
  begin_right(editor);
}

void move_end_left(Editor& editor) {
  ensure_selection(editor.selection, editor.selection.cursor);
  end_left(editor);
}

void move_end_right(Editor& editor) {
  ensure_selection(editor.selection, editor.selection.cursor);
  end_right(editor);
}

void move_selection_left(Editor& editor) {
  ensure_selection(editor.selection, editor.selection.cursor);
  begin_left(editor);
  end_left(editor);
}

void move_selection_right(Editor& editor) {
  ensure_selection(editor.selection, editor.selection.cursor);
  end_right(editor);
  begin_right(editor);
}

void begin_selection_for_field(Editor& editor) {
  if (editor.selection.sel_beg == no_position)
    set_sel_begin(
        editor.document, editor.selection,
        frame_at(editor.document, play_position(editor.playback), editor.selection.current_frame));
}

void select(Editor& editor, EditPosition begin, EditPosition end) {
  carry_out(editor, selection_change, [begin, end, &editor] {
    select_range(editor, no_position, no_position);
    set_sel_begin(editor.document, editor.selection, begin);
    set_sel_end(editor.document, editor.selection, end);
    return Result::done;
  });
}

void mouse_select(Editor& editor, EditPosition pos, MouseButtons buttons, bool is_press) {
  if (buttons.ctrl) return seek_to(editor.playback, pos);
  if (!is_press) return drag_ends(editor, pos, buttons);
  carry_out(editor, selection_change, [pos, buttons, &editor] {
    const bool is_new = settings.mouse_method != 0 && buttons.left && !buttons.shift;
    if (is_new) select_range(editor, no_position, no_position);
    drag_ends(editor, pos, buttons);
    return Result::done;
  });
}

}  // namespace corvelin
