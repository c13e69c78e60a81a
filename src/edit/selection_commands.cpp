// Selecting.
#include "edit/selection_commands.h"

#include "audio/playback.h"
#include "edit/undo.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/settings.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

void push_selection() { undo_push(false, ui_text(win, 22)); }

// Sets both ends as they are. The cue flag stays, so that the next cut does what the last was to
// do.
void select_range(EditPosition begin, EditPosition end) {
  selection.sel_beg = begin;
  selection.sel_end = end;
}

void begin_left() { set_sel_begin(frame_before(selection.sel_beg)); }
void begin_right() { set_sel_begin(frame_at(selection.sel_beg + next_frame_step)); }
void end_left() { set_sel_end(frame_before(selection.sel_end)); }
void end_right() { set_sel_end(frame_at(selection.sel_end + next_frame_step)); }

void start_move() {
  push_selection();
  ensure_selection(selection.cursor);
}

bool is_nearer_to_end(EditPosition pos) {
  if (selection.sel_beg == no_position || pos < selection.sel_beg) return false;
  const EditPosition to_end =
      pos < selection.sel_end ? selection.sel_end - pos : pos - selection.sel_end;
  return to_end <= pos - selection.sel_beg;
}

}  // namespace

void set_begin() {
  undo_push(false, ui_text(win, 8));
  set_sel_begin(frame_at(play_position()));
}

void set_end() {
  undo_push(false, ui_text(win, 9));
  set_sel_end(frame_at(play_position()));
}

void select_all() {
  undo_push(false, ui_text(men, 25));
  select_range(0, document.total_size);
}

void select_current_part() {
  undo_push(false, ui_text(men, 33));
  select_range(document.parts[document.current_part].part_beg, part_end(document.current_part));
}

void remove_selection() {
  push_selection();
  clear_selection();
}

void select_to_start() {
  push_selection();
  select_range(0, selection.cursor);
}

void select_to_end() {
  push_selection();
  select_range(selection.cursor, document.total_size);
}

void move_begin_left() {
  start_move();
  begin_left();
}

void move_begin_right() {
  start_move();
  begin_right();
}

void move_end_left() {
  start_move();
  end_left();
}

void move_end_right() {
  start_move();
  end_right();
}

void move_selection_left() {
  start_move();
  begin_left();
  end_left();
}

void move_selection_right() {
  start_move();
  end_right();
  begin_right();
}

void begin_selection_for_field() {
  if (selection.sel_beg == no_position) set_sel_begin(frame_at(play_position()));
}

void mouse_select(EditPosition pos, MouseButtons buttons, bool is_press) {
  if (buttons.ctrl) return seek_to(pos);
  if (is_press) push_selection();
  if (settings.mouse_method == 0) {
    if (buttons.left) set_sel_begin(pos);
    if (buttons.right) set_sel_end(pos);
    return;
  }
  if (buttons.left && is_press && !buttons.shift) select_range(no_position, no_position);
  if (is_nearer_to_end(pos)) {
    set_sel_end(pos);
  } else {
    set_sel_begin(pos);
  }
}

}  // namespace corvelin
