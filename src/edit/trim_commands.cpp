// Trimming of cuts and moving of cues.
#include "edit/trim_commands.h"

#include <algorithm>
#include <cstdint>

#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"

namespace corvelin {

namespace {

Part& current() { return document.parts[document.current_part]; }
Part& before_current() { return document.parts[document.current_part - 1u]; }
PartIndex index_before() { return static_cast<PartIndex>(document.current_part - 1); }

void finish() {
  renumber_parts();
  recompute_total();
}

// The first frame of the removed material behind the part in front of the cut ends here. Counted
// from the cut; 0 when none is found.
std::uint32_t frame_behind_left_side() {
  // For the moment the part reaches farther than a search does, so that its end is no answer.
  constexpr std::uint32_t far_behind = search_block_size + frame_unit;
  const EditPosition cut = current().part_beg;
  before_current().part_size += far_behind;
  const EditPosition frame = next_frame_in(index_before(), cut);
  before_current().part_size -= far_behind;
  return frame == no_position ? 0 : frame - cut;
}

// The length of the last frame in front of the right side of the cut, in the `reach` bytes before
// it in its file; 0 when there is none.
std::uint32_t frame_in_front_of_right_side(std::uint32_t reach) {
  // For the moment the part begins `reach` bytes earlier.
  Part& part = current();
  const EditPosition old_start = part.part_beg + reach;
  part.part_filepos -= reach;
  part.part_size += reach;
  document.total_size += reach;
  const EditPosition frame = frame_before_in(document.current_part, old_start);
  part.part_filepos += reach;
  part.part_size -= reach;
  document.total_size -= reach;
  return frame == no_position ? 0 : old_start - frame;
}

}  // namespace

void trim_left_out() {
  if (document.current_part == 0) return;
  if (!has_gap(document.current_part)) {
    current().part_iscue = 1;
    return;
  }
  const std::uint32_t gained = frame_behind_left_side();
  if (gained == 0 || !has_room_for(gained)) return;
  before_current().part_size += gained;
  selection.cursor += gained;
  finish();
}

void trim_left_in() {
  if (document.current_part == 0) return;
  const EditPosition frame = frame_before_in(index_before(), current().part_beg);
  if (frame == no_position) return;
  const std::uint32_t lost = current().part_beg - frame;
  if (lost >= before_current().part_size) return;
  before_current().part_size -= lost;
  current().part_iscue = 0;
  if (lost <= selection.cursor) selection.cursor -= lost;
  finish();
}

void trim_right_in() {
  Part& part = current();
  const EditPosition frame = next_frame_in(document.current_part, part.part_beg);
  if (frame == no_position) return;
  const std::uint32_t lost = frame - part.part_beg;
  if (lost >= part.part_size) return;
  part.part_iscue = 0;
  part.part_size -= lost;
  part.part_filepos += lost;
  finish();
}

void trim_right_out() {
  Part& part = current();
  if (!has_gap(document.current_part)) {
    part.part_iscue = 1;
    return;
  }
  const std::uint32_t first_audio = document.files[part.part_file].first_audio;
  if (part.part_filepos <= first_audio || !has_room_for(frame_unit)) return;
  const std::uint32_t gained =
      frame_in_front_of_right_side(std::min(part.part_filepos - first_audio, frame_unit));
  part.part_filepos -= gained;
  part.part_size += gained;
  finish();
}

void move_cue_left() {
  if (document.current_part == 0) return;
  move_border(document.current_part, frame_before_in(index_before(), current().part_beg));
}

void move_cue_right() {
  if (document.current_part == 0) return;
  move_border(document.current_part, next_frame_in(document.current_part, current().part_beg));
}

}  // namespace corvelin
