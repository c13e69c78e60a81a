// Frame steps within a part, and keeping the cursor and the selection on frame starts.
#include "edit/places.h"

#include <algorithm>
#include <utility>

#include "model/frame_locator.h"
#include "model/selection.h"
#include "stream/frame_header.h"

namespace corvelin {

namespace {

void settle(EditPosition& pos) {
  pos = std::min(pos, document.total_size);
  if (pos == document.total_size) return;
  stream.current_frame = {};  // a place in a file of another sample rate is a frame start too
  // The locator reads on behind the part, where its file may go on otherwise than the stream.
  const PartIndex part = part_at(pos);
  pos = std::min(scan_forward(part, pos), part_end(part));
}

}  // namespace

bool has_selection() {
  return selection.sel_beg != no_position && selection.sel_end != no_position;
}

EditPosition next_frame_in(PartIndex part, EditPosition frame) {
  constexpr std::uint32_t step = 10;  // bytes, less than any frame has
  return locate_frame(part, frame + step);
}

EditPosition frame_before_in(PartIndex part, EditPosition pos) {
  // Where the part has none the search ends in an earlier one, or where that one's file goes on.
  const EditPosition frame = frame_before(pos);
  const bool is_inside = frame >= document.parts[part].part_beg && frame < pos;
  const FrameInfo found_last = std::exchange(stream.current_frame, {});  // of any sample rate
  const bool is_frame = is_inside && locate_frame(part, frame) == frame;
  stream.current_frame = found_last;
  return is_frame ? frame : no_position;
}

void settle_places() {
  const FrameInfo frame = stream.current_frame;
  settle(selection.cursor);
  if (has_selection()) {
    settle(selection.sel_beg);
    settle(selection.sel_end);
  }
  stream.current_frame = frame;
}

}  // namespace corvelin
