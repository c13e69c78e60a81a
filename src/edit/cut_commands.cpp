// SPDX-License-Identifier: GPL-2.0-or-later
// Cut/Cue, Edit, Crop, and the removal of edit points.
#include "edit/cut_commands.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Gives the part behind a cut what belongs to the border. The level goes on as in front of the cut
// and returns to `tail_gain` one frame later. Returns the last part that was made.
PartIndex finish_border(PartIndex made, std::int16_t tail_gain) {
  take_stashed_part_texts(document, selection, made);
  Part& part = document.parts[made];
  part.part_iscue = made == 0 ? 1 : selection.sel_iscue;
  if (made == 0) return made;
  part.part_gainbeg = document.parts[made - 1u].part_gainbeg;
  if (part.part_gainbeg == tail_gain) return made;

  const EditPosition frame = next_frame_in(document, made, part.part_beg, selection.current_frame);
  if (frame > part_end(document, made)) return made;
  const PartIndex behind = make_border(document, frame);
  if (behind >= part_count(document)) return made;
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
  } else if (cursor > selection.sel_beg && made < part_count(document)) {
    cursor = document.parts[made].part_beg;
  }
}

Outcome refuse_as_impossible() {
  return {Result::refused, MessageBox{.caption = std::string(ui_text(row::error)),
                                      .text = std::string(ui_text(row::not_possible)),
                                      .icon = BoxIcon::error}};
}

}  // namespace

Outcome cut_or_cue() {
  const EditPosition beg = selection.sel_beg;
  const EditPosition end = selection.sel_end;
  if (!can_delete_range(document, beg, end)) return refuse(ui_text(row::selection_invalid));

  const PartIndex at_end = part_at(document, end);
  const std::int16_t tail_gain = document.parts[at_end].part_gainbeg;
  // A range inside one part takes nothing along: the names stay with what is in front of it.
  if (part_at(document, beg) != at_end || (beg == 0 && at_end == 0)) {
    stash_part_texts(document, selection, at_end);
    selection.sel_iscue = document.parts[at_end].part_iscue;
  }
  PartIndex made = delete_range(document, beg, end);
  if (made < part_count(document)) made = finish_border(made, tail_gain);
  move_cursor_out_of_cut(made);
  clear_selection(selection);
  return Result::done;
}

Outcome edit_restore() {
  // At the end of the stream the tail is meant, whatever part was clicked.
  const bool is_tail = selection.cursor == document.total_size;
  const auto last = static_cast<PartIndex>(part_count(document) - 1);
  const std::uint32_t size = document.total_size;
  const std::size_t parts = document.parts.size();
  const PartIndex joined =
      restore_border(document, selection, is_tail ? last : document.current_part, selection.cursor);
  if (joined == no_part) return refuse_as_impossible();
  document.current_part = joined;
  const bool is_same = document.total_size == size && document.parts.size() == parts;
  return is_same ? Result::nothing : Result::done;
}

Outcome crop() {
  const EditPosition beg = selection.sel_beg;
  const EditPosition end = selection.sel_end;
  const bool is_whole = beg == 0 && end == document.total_size;
  if (!is_whole && document.parts.size() >= most_parts)
    return refuse(ui_text(row::selection_invalid));
  delete_range(document, end, document.total_size);  // first, so that `beg` still holds
  delete_range(document, 0, beg);
  if (beg < selection.cursor) selection.cursor -= beg;
  clear_selection(selection);
  return Result::done;
}

Outcome remove_edit_points() {
  // The stream's start is no edit point, so the first frame stays out of it.
  const EditPosition beg = selection.sel_beg == 0
                               ? next_frame_in(document, 0, 0, selection.current_frame)
                               : selection.sel_beg;
  if (beg == no_position) return refuse_as_impossible();
  selection.sel_beg = beg;
  selection.sel_end = std::max(selection.sel_end, beg);
  const EditPosition end = selection.sel_end;
  if (!can_delete_range(document, beg, end)) return refuse_as_impossible();
  const PartIndex behind = delete_range(document, beg, end);
  const PartIndex joined =
      behind < part_count(document) ? restore_border(document, selection, behind, beg) : no_part;
  if (joined == no_part) return refuse_as_impossible();
  document.current_part = joined;
  return Result::done;
}

}  // namespace corvelin
