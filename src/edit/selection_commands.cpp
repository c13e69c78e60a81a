// SPDX-License-Identifier: GPL-2.0-or-later
// Selecting.
#include "edit/selection_commands.h"

#include "audio/playback.h"
#include "audio/the_player.h"
#include "edit/commands.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

// Sets both ends as they are. The cue flag stays, so that the next cut does what the last was to
// do.
void select_range(EditPosition begin, EditPosition end) {
  selection.sel_beg = begin;
  selection.sel_end = end;
}

EditPosition frame_after(EditPosition frame) {
  return next_frame_in(document, part_at(document, frame), frame, selection.current_frame);
}

void begin_left() {
  set_sel_begin(document, selection,
                frame_before(document, selection.sel_beg, selection.current_frame));
}
void begin_right() { set_sel_begin(document, selection, frame_after(selection.sel_beg)); }
void end_left() {
  set_sel_end(document, selection,
              frame_before(document, selection.sel_end, selection.current_frame));
}
void end_right() { set_sel_end(document, selection, frame_after(selection.sel_end)); }

bool is_nearer_to_end(EditPosition pos) {
  if (selection.sel_beg == no_position || pos < selection.sel_beg) return false;
  const EditPosition to_end =
      pos < selection.sel_end ? selection.sel_end - pos : pos - selection.sel_end;
  return to_end <= pos - selection.sel_beg;
}

// Moves the end that the button stands for, or the nearer one.
void drag_ends(EditPosition pos, MouseButtons buttons) {
  if (settings.mouse_method == 0) {
    if (buttons.left) set_sel_begin(document, selection, pos);
    if (buttons.right) set_sel_end(document, selection, pos);
  } else if (is_nearer_to_end(pos)) {
    set_sel_end(document, selection, pos);
  } else {
    set_sel_begin(document, selection, pos);
  }
}

}  // namespace

void set_begin() {
  set_sel_begin(document, selection,
                frame_at(document, play_position(playback), selection.current_frame));
}

void set_end() {
  set_sel_end(document, selection,
              frame_at(document, play_position(playback), selection.current_frame));
}

void select_all() { select_range(0, document.total_size); }

void select_current_part() {
  select_range(document.parts[document.current_part].part_beg,
               part_end(document, document.current_part));
}

void select_to_start() { select_range(0, selection.cursor); }

void select_to_end() { select_range(selection.cursor, document.total_size); }

Result remove_selection() {
  if (selection.sel_beg == no_position && selection.sel_end == no_position) return Result::nothing;
  clear_selection(selection);
  return Result::done;
}

void move_begin_left() {
  ensure_selection(selection, selection.cursor);
  begin_left();
}

void move_begin_right() {
  ensure_selection(selection, selection.cursor);
  begin_right();
}

void move_end_left() {
  ensure_selection(selection, selection.cursor);
  end_left();
}

void move_end_right() {
  ensure_selection(selection, selection.cursor);
  end_right();
}

void move_selection_left() {
  ensure_selection(selection, selection.cursor);
  begin_left();
  end_left();
}

void move_selection_right() {
  ensure_selection(selection, selection.cursor);
  end_right();
  begin_right();
}

void begin_selection_for_field() {
  if (selection.sel_beg == no_position)
    set_sel_begin(document, selection,
                  frame_at(document, play_position(playback), selection.current_frame));
}

void select(EditPosition begin, EditPosition end) {
  carry_out(selection_change, [begin, end] {
    select_range(no_position, no_position);
    set_sel_begin(document, selection, begin);
    set_sel_end(document, selection, end);
    return Result::done;
  });
}

void mouse_select(EditPosition pos, MouseButtons buttons, bool is_press) {
  if (buttons.ctrl) return seek_to(playback, pos);
  if (!is_press) return drag_ends(pos, buttons);
  carry_out(selection_change, [pos, buttons] {
    const bool is_new = settings.mouse_method != 0 && buttons.left && !buttons.shift;
    if (is_new) select_range(no_position, no_position);
    drag_ends(pos, buttons);
    return Result::done;
  });
}

}  // namespace corvelin
