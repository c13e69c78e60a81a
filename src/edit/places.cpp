// SPDX-License-Identifier: GPL-2.0-or-later
// Frame steps within a part, and keeping the cursor and the selection on frame starts.
#include "edit/places.h"

#include <algorithm>
#include <utility>

#include "edit/editor.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/text/numbers.h"

namespace corvelin {

namespace {

void settle(const Editor& editor, EditPosition& pos) {
  pos = std::min(pos, editor.document.total_size);
  if (pos == editor.document.total_size) return;
  // The locator reads on behind the part, where its file may go on otherwise than the stream. A
  // place in a file of another sample rate is a frame start too.
  const PartIndex part = part_at(editor.document, pos);
  pos =
      std::min(find_frame_forward(editor.document, part, pos).pos, part_end(editor.document, part));
}

}  // namespace

EditPosition frame_before_in(const Document& document, PartIndex part, EditPosition pos,
                             FrameInfo& last_found) {
  // Where the part has none the search ends in an earlier one, or where that one's file goes on.
  const EditPosition frame = frame_before(document, pos, last_found);
  const bool is_inside = frame >= document.parts[part].part_beg && frame < pos;
  const bool is_frame = is_inside && find_frame(document, part, frame).pos == frame;
  return is_frame ? frame : no_position;
}

std::uint32_t frame_length_at_cursor(const Editor& editor) {
  const EditPosition cursor = editor.selection.cursor;
  return find_frame(editor.document, part_at(editor.document, cursor), cursor).frame.frame_length;
}

std::uint32_t average_frames(const Document& document, std::uint32_t count) {
  return whole_part(double{document.stream.avg_frame_size} * count, highest_position);
}

void settle_places(Editor& editor) {
  settle(editor, editor.selection.cursor);
  if (has_selection(editor.selection)) {
    settle(editor, editor.selection.sel_beg);
    settle(editor, editor.selection.sel_end);
  }
}

}  // namespace corvelin
