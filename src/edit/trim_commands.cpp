// SPDX-License-Identifier: GPL-2.0-or-later
// Trimming of cuts and moving of cues.
#include "edit/trim_commands.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"

namespace corvelin {

namespace {

Part& current() { return document.parts[document.current_part]; }
Part& before_current() { return document.parts[document.current_part - 1u]; }
PartIndex index_before() { return static_cast<PartIndex>(document.current_part - 1); }

Result finish() {
  renumber_parts(document);
  recompute_total(document);
  return Result::done;
}

// What is left to do where the cut is closed.
Result make_cue_of_current() {
  return std::exchange(current().part_iscue, 1) == 1 ? Result::nothing : Result::done;
}

Result move_cue_to(EditPosition pos) {
  const EditPosition before = current().part_beg;
  move_border(document, document.current_part, pos);
  return current().part_beg == before ? Result::nothing : Result::done;
}

// The first frame of the removed material behind the part in front of the cut ends here. Counted
// from the cut; 0 when none is found.
std::uint32_t frame_behind_left_side() {
  // For the moment the part reaches farther than a search does, so that its end is no answer.
  constexpr std::uint32_t far_behind = search_block_size + frame_unit;
  const EditPosition cut = current().part_beg;
  before_current().part_size += far_behind;
  const EditPosition frame = next_frame_in(document, index_before(), cut, selection.current_frame);
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

Result trim_left_out() {
  if (document.current_part == 0) return Result::nothing;
  if (!has_gap(document, document.current_part)) return make_cue_of_current();
  const std::uint32_t gained = frame_behind_left_side();
  if (gained == 0 || !has_room_for(document, gained)) return Result::nothing;
  before_current().part_size += gained;
  selection.cursor += gained;
  return finish();
}

Result trim_left_in() {
  if (document.current_part == 0) return Result::nothing;
  const EditPosition frame = frame_before_in(index_before(), current().part_beg);
  if (frame == no_position) return Result::nothing;
  const std::uint32_t lost = current().part_beg - frame;
  if (lost >= before_current().part_size) return Result::nothing;
  before_current().part_size -= lost;
  current().part_iscue = 0;
  if (lost <= selection.cursor) selection.cursor -= lost;
  return finish();
}

Result trim_right_in() {
  Part& part = current();
  const EditPosition frame =
      next_frame_in(document, document.current_part, part.part_beg, selection.current_frame);
  if (frame == no_position) return Result::nothing;
  const std::uint32_t lost = frame - part.part_beg;
  if (lost >= part.part_size) return Result::nothing;
  part.part_iscue = 0;
  part.part_size -= lost;
  part.part_filepos += lost;
  return finish();
}

Result trim_right_out() {
  if (!has_gap(document, document.current_part)) return make_cue_of_current();
  Part& part = current();
  const std::uint32_t first_audio = document.files[part.part_file].first_audio;
  if (part.part_filepos <= first_audio || !has_room_for(document, frame_unit))
    return Result::nothing;
  const std::uint32_t gained =
      frame_in_front_of_right_side(std::min(part.part_filepos - first_audio, frame_unit));
  if (gained == 0) return Result::nothing;
  part.part_filepos -= gained;
  part.part_size += gained;
  return finish();
}

Result move_cue_left() {
  if (document.current_part == 0) return Result::nothing;
  return move_cue_to(frame_before_in(index_before(), current().part_beg));
}

Result move_cue_right() {
  if (document.current_part == 0) return Result::nothing;
  return move_cue_to(
      next_frame_in(document, document.current_part, current().part_beg, selection.current_frame));
}

}  // namespace corvelin
