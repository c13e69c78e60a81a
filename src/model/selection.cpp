// SPDX-License-Identifier: GPL-2.0-or-later
// The setters of the selection and the cursor.
#include "model/selection.h"

#include <algorithm>

#include "model/frame_locator.h"

namespace corvelin {

namespace {

// A selection without length is a cue, one with a length a cut; only the border of a cue that was
// just restored stays a cue while its ends are moved.
void update_cue_flag(Selection& selection) {
  const bool is_point = selection.sel_beg == selection.sel_end;
  selection.sel_iscue = is_point || selection.sel_cue_locked != 0 ? 1 : 0;
}

}  // namespace

bool has_selection(const Selection& selection) {
  return selection.sel_beg != no_position && selection.sel_end != no_position;
}

bool has_selected_range(const Selection& selection) {
  return has_selection(selection) && selection.sel_beg < selection.sel_end;
}

bool ensure_selection(Selection& selection, EditPosition pos) {
  if (has_selection(selection)) return false;
  selection.sel_beg = selection.sel_end = pos;
  return true;
}

void set_sel_begin(const Document& document, Selection& selection, EditPosition pos) {
  if (pos == no_position) return;
  pos = std::min(pos, document.total_size);
  ensure_selection(selection, pos);
  selection.sel_end = std::max(selection.sel_end, pos);
  selection.sel_beg = pos;
  update_cue_flag(selection);
}

void set_sel_end(const Document& document, Selection& selection, EditPosition pos) {
  if (pos == no_position) return;
  pos = std::min(pos, document.total_size);
  ensure_selection(selection, pos);
  selection.sel_beg = std::min(selection.sel_beg, pos);
  selection.sel_end = pos;
  update_cue_flag(selection);
}

void set_selection(Selection& selection, EditPosition begin, EditPosition end) {
  if (begin == no_position) return clear_selection(selection);
  selection.sel_beg = begin;
  selection.sel_end = end;
  update_cue_flag(selection);
}

void clear_selection(Selection& selection) {
  selection = {.cursor = selection.cursor, .current_frame = selection.current_frame};
}

void move_cursor(Document& document, Selection& selection, EditPosition pos) {
  if (pos > highest_position) return;
  document.current_part = part_at(document, std::min(pos, document.total_size));
  const std::uint32_t rate = selection.current_frame.sample_rate;
  FramePlace found = find_frame_forward(document, document.current_part, pos, rate);
  // Where the last part's file goes on at another sample rate the search may end behind the stream.
  selection.cursor = std::min(found.pos, document.total_size);
  if (pos >= document.total_size) return;
  const bool is_at_border = found.frame.version == 0 && selection.cursor < document.total_size;
  if (is_at_border)
    found = find_frame(document, part_at(document, selection.cursor), selection.cursor);
  if (found.frame.version != 0) selection.current_frame = found.frame;
}

}  // namespace corvelin
