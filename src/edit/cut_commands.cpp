// Cut/Cue, Edit, Crop, and the removal of edit points.
#include "edit/cut_commands.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "document/open_state.h"
#include "edit/places.h"
#include "edit/requirements.h"
#include "edit/undo.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/selection.h"
#include "text/boxes.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Gives the part behind a cut what belongs to the border. The level goes on as in front of the cut
// and returns to `tail_gain` one frame later. Returns the last part that was made.
PartIndex finish_border(PartIndex made, std::int16_t tail_gain) {
  take_stashed_part_texts(made);
  Part& part = document.parts[made];
  part.part_iscue = made == 0 ? 1 : selection.sel_iscue;
  if (made == 0) return made;
  part.part_gainbeg = document.parts[made - 1u].part_gainbeg;
  if (part.part_gainbeg == tail_gain) return made;

  const EditPosition frame = next_frame_in(made, part.part_beg);
  if (frame > part_end(made)) return made;
  const PartIndex behind = delete_range(frame, frame);
  if (behind >= part_count()) return made;
  document.parts[behind].part_gainbeg = tail_gain;
  return behind;
}

// Where the cursor goes when the selected range is gone.
void move_cursor_out_of_cut(PartIndex made) {
  EditPosition& cursor = selection.cursor;
  if (cursor > selection.sel_end) {
    cursor -= selection.sel_end - selection.sel_beg;
  } else if (cursor > document.total_size) {
    cursor = document.total_size;
  } else if (cursor > selection.sel_beg && made < part_count()) {
    cursor = document.parts[made].part_beg;
  }
}

void finish_without_selection() {
  clear_selection();
  settle_places();
  document.current_part = part_at(selection.cursor);
  open_state.document_modified = true;
}

bool refuse_as_impossible() {
  show_error(std::string(ui_text(msg, 8)));
  return false;
}

}  // namespace

bool cut_or_cue(bool skip_snapshot) {
  if (!has_selection()) return true;
  if (!skip_snapshot) undo_push(true, ui_text(win, 5));
  const EditPosition beg = selection.sel_beg;
  const EditPosition end = selection.sel_end;
  if (!can_delete_range(beg, end)) {
    show_invalid_range();
    return false;
  }

  const PartIndex at_end = part_at(end);
  const std::int16_t tail_gain = document.parts[at_end].part_gainbeg;
  // A range inside one part takes nothing along: the names stay with what is in front of it.
  if (part_at(beg) != at_end || (beg == 0 && at_end == 0)) {
    stash_part_texts(at_end);
    selection.sel_iscue = document.parts[at_end].part_iscue;
  }
  PartIndex made = delete_range(beg, end);
  if (made < part_count()) made = finish_border(made, tail_gain);
  move_cursor_out_of_cut(made);
  finish_without_selection();
  name_parts_from_files();
  return true;
}

bool edit_restore() {
  undo_push(true, ui_text(win, 7));
  // At the end of the stream the tail is meant, whatever part was clicked.
  const bool is_tail = selection.cursor == document.total_size;
  const auto last = static_cast<PartIndex>(part_count() - 1);
  const PartIndex joined = restore_border(is_tail ? last : document.current_part, selection.cursor);
  if (joined == no_part) return refuse_as_impossible();
  document.current_part = joined;
  open_state.document_modified = true;
  name_parts_from_files();
  settle_places();
  return true;
}

bool crop() {
  if (!require_selected_range()) return false;
  undo_push(true, ui_text(men, 28));
  const EditPosition beg = selection.sel_beg;
  delete_range(selection.sel_end, document.total_size);  // first, so that `beg` still holds
  const bool head_is_gone = delete_range(0, beg) != no_part;
  if (head_is_gone && beg < selection.cursor) selection.cursor -= beg;
  finish_without_selection();
  return true;
}

bool remove_edit_points() {
  if (!has_selection()) return true;
  undo_push(true, ui_text(men, 20));
  // The stream's start is no edit point, so the first frame stays out of it.
  if (selection.sel_beg == 0) selection.sel_beg = next_frame_in(0, 0);
  selection.sel_end = std::max(selection.sel_end, selection.sel_beg);
  const EditPosition beg = selection.sel_beg;
  const EditPosition end = selection.sel_end;
  if (!can_delete_range(beg, end)) return refuse_as_impossible();
  const PartIndex behind = delete_range(beg, end);
  const PartIndex joined = behind < part_count() ? restore_border(behind, beg) : no_part;
  settle_places();
  if (joined == no_part) return refuse_as_impossible();
  document.current_part = joined;
  return true;
}

}  // namespace corvelin
