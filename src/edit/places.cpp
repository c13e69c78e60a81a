// SPDX-License-Identifier: GPL-2.0-or-later
// Frame steps within a part, and keeping the cursor and the selection on frame starts.
#include "edit/places.h"

#include <algorithm>
#include <utility>

#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"
#include "platform/numbers.h"

namespace corvelin {

namespace {

void settle(EditPosition& pos) {
  pos = std::min(pos, document.total_size);
  if (pos == document.total_size) return;
  // The locator reads on behind the part, where its file may go on otherwise than the stream. A
  // place in a file of another sample rate is a frame start too.
  const PartIndex part = part_at(document, pos);
  pos = std::min(find_frame_forward(document, part, pos).pos, part_end(document, part));
}

}  // namespace

EditPosition frame_before_in(PartIndex part, EditPosition pos) {
  // Where the part has none the search ends in an earlier one, or where that one's file goes on.
  const EditPosition frame = frame_before(document, pos, selection.current_frame);
  const bool is_inside = frame >= document.parts[part].part_beg && frame < pos;
  const bool is_frame = is_inside && find_frame(document, part, frame).pos == frame;
  return is_frame ? frame : no_position;
}

std::uint32_t frame_length_at_cursor() {
  const EditPosition cursor = selection.cursor;
  return find_frame(document, part_at(document, cursor), cursor).frame.frame_length;
}

std::uint32_t average_frames(std::uint32_t count) {
  return whole_part(double{document.stream.avg_frame_size} * count, highest_position);
}

void settle_places() {
  settle(selection.cursor);
  if (has_selection(selection)) {
    settle(selection.sel_beg);
    settle(selection.sel_end);
  }
}

}  // namespace corvelin
