// SPDX-License-Identifier: GPL-2.0-or-later
// Cut/Cue, Edit, Crop, and the removal of edit points.
#include "edit/cut_commands.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "edit/editor.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Gives the part behind a cut what belongs to the border. The level goes on as in front of the cut
// and returns to `tail_gain` one frame later. Returns the last part that was made.
PartIndex finish_border(Editor& editor, PartIndex made, std::int16_t tail_gain) {
  take_stashed_part_texts(editor.document, editor.selection, made);
  Part& part = editor.document.parts[made];
  part.part_iscue = made == 0 ? 1 : editor.selection.sel_iscue;
  if (made == 0) return made;
  part.part_gainbeg = editor.document.parts[made - 1u].part_gainbeg;
  if (part.part_gainbeg == tail_gain) return made;

  const EditPosition frame =
      next_frame_in(editor.document, made, part.part_beg, editor.selection.current_frame);
  if (frame > part_end(editor.document, made)) return made;
  const PartIndex behind = make_border(editor.document, frame);
  if (behind >= part_count(editor.document)) return made;
  editor.document.parts[behind].part_gainbeg = tail_gain;
  return behind;
}

// Where the cursor goes when the selected range is gone.
void move_cursor_out_of_cut(Editor& editor, PartIndex made) {
  EditPosition& cursor = editor.selection.cursor;
  if (cursor > editor.selection.sel_end) {
    cursor -= editor.selection.sel_end - editor.selection.sel_beg;
  } else if (cursor > editor.document.total_size) {
    cursor = editor.document.total_size;
  } else if (cursor > editor.selection.sel_beg && made < part_count(editor.document)) {
    cursor = editor.document.parts[made].part_beg;
  }
}

Outcome refuse_as_impossible() {
  return {Result::refused, MessageBox{.caption = std::string(ui_text(row::error)),
                                      .text = std::string(ui_text(row::not_possible)),
                                      .icon = BoxIcon::error}};
}

}  // namespace

Outcome cut_or_cue(Editor& editor) {
  const EditPosition beg = editor.selection.sel_beg;
  const EditPosition end = editor.selection.sel_end;
  if (!can_delete_range(editor.document, beg, end)) return refuse(ui_text(row::selection_invalid));

  const PartIndex at_end = part_at(editor.document, end);
  const std::int16_t tail_gain = editor.document.parts[at_end].part_gainbeg;
  // A range inside one part takes nothing along: the names stay with what is in front of it.
  if (part_at(editor.document, beg) != at_end || (beg == 0 && at_end == 0)) {
    stash_part_texts(editor.document, editor.selection, at_end);
    editor.selection.sel_iscue = editor.document.parts[at_end].part_iscue;
  }
  PartIndex made = delete_range(editor.document, beg, end);
  if (made < part_count(editor.document)) made = finish_border(editor, made, tail_gain);
  move_cursor_out_of_cut(editor, made);
  clear_selection(editor.selection);
  return Result::done;
}

Outcome edit_restore(Editor& editor) {
  // At the end of the stream the tail is meant, whatever part was clicked.
  const bool is_tail = editor.selection.cursor == editor.document.total_size;
  const auto last = static_cast<PartIndex>(part_count(editor.document) - 1);
  const std::uint32_t size = editor.document.total_size;
  const std::size_t parts = editor.document.parts.size();
  const PartIndex joined =
      restore_border(editor.document, editor.selection,
                     is_tail ? last : editor.document.current_part, editor.selection.cursor);
  if (joined == no_part) return refuse_as_impossible();
  editor.document.current_part = joined;
  const bool is_same = editor.document.total_size == size && editor.document.parts.size() == parts;
  return is_same ? Result::nothing : Result::done;
}

Outcome crop(Editor& editor) {
  const EditPosition beg = editor.selection.sel_beg;
  const EditPosition end = editor.selection.sel_end;
  const bool is_whole = beg == 0 && end == editor.document.total_size;
  if (!is_whole && editor.document.parts.size() >= most_parts)
    return refuse(ui_text(row::selection_invalid));
  delete_range(editor.document, end,
               editor.document.total_size);  // first, so that `beg` still holds
  delete_range(editor.document, 0, beg);
  if (beg < editor.selection.cursor) editor.selection.cursor -= beg;
  clear_selection(editor.selection);
  return Result::done;
}

Outcome remove_edit_points(Editor& editor) {
  // The stream's start is no edit point, so the first frame stays out of it.
  const EditPosition beg =
      editor.selection.sel_beg == 0
          ? next_frame_in(editor.document, 0, 0, editor.selection.current_frame)
          : editor.selection.sel_beg;
  if (beg == no_position) return refuse_as_impossible();
  editor.selection.sel_beg = beg;
  editor.selection.sel_end = std::max(editor.selection.sel_end, beg);
  const EditPosition end = editor.selection.sel_end;
  if (!can_delete_range(editor.document, beg, end)) return refuse_as_impossible();
  const PartIndex behind = delete_range(editor.document, beg, end);
  const PartIndex joined = behind < part_count(editor.document)
                               ? restore_border(editor.document, editor.selection, behind, beg)
                               : no_part;
  if (joined == no_part) return refuse_as_impossible();
  editor.document.current_part = joined;
  return Result::done;
}

}  // namespace corvelin
