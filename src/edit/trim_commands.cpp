// SPDX-License-Identifier: GPL-2.0-or-later
// Trimming of cuts and moving of cues.
#include "edit/trim_commands.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "edit/editor.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"

namespace corvelin {

namespace {

Part& current(Editor& editor) { return editor.document.parts[editor.document.current_part]; }
Part& before_current(Editor& editor) {
  return editor.document.parts[editor.document.current_part - 1u];
}
PartIndex index_before(const Document& document) {
  return static_cast<PartIndex>(document.current_part - 1);
}

Result finish(Editor& editor) {
  renumber_parts(editor.document);
  recompute_total(editor.document);
  return Result::done;
}

// What is left to do where the cut is closed.
Result make_cue_of_current(Editor& editor) {
  return std::exchange(current(editor).part_iscue, 1) == 1 ? Result::nothing : Result::done;
}

Result move_cue_to(Editor& editor, EditPosition pos) {
  const EditPosition before = current(editor).part_beg;
  move_border(editor.document, editor.document.current_part, pos);
  return current(editor).part_beg == before ? Result::nothing : Result::done;
}

// A part alone, with what lies around it in its source, in bytes.
Document part_in_its_source(const Document& document, const Part& part, std::uint32_t in_front,
                            std::uint32_t behind) {
  Document around = {
      .files = {document.files[part.part_file]}, .stream = document.stream, .kind = document.kind};
  add_part(around, 0, 0, part.part_filepos - in_front, in_front + part.part_size + behind);
  return around;
}

// The first frame of the removed material behind the part in front of the cut ends here. Counted
// from the cut; 0 when none is found.
std::uint32_t frame_behind_left_side(Editor& editor) {
  // Farther than a search reaches, so that the end is no answer.
  constexpr std::uint32_t far_behind = search_block_size + frame_unit;
  if (!has_room_for(editor.document, far_behind)) return 0;
  const Part& part = before_current(editor);
  const Document source = part_in_its_source(editor.document, part, 0, far_behind);
  const EditPosition frame =
      next_frame_in(source, 0, part.part_size, editor.selection.current_frame);
  return frame == no_position ? 0 : frame - part.part_size;
}

// The length of the last frame in front of the right side of the cut, in the `reach` bytes before
// it in its file; 0 when there is none.
std::uint32_t frame_in_front_of_right_side(Editor& editor, std::uint32_t reach) {
  const Document source = part_in_its_source(editor.document, current(editor), reach, 0);
  const EditPosition frame = frame_before_in(source, 0, reach, editor.selection.current_frame);
  return frame == no_position ? 0 : reach - frame;
}

}  // namespace

Result trim_left_out(Editor& editor) {
  if (editor.document.current_part == 0) return Result::nothing;
  if (!has_gap(editor.document, editor.document.current_part)) return make_cue_of_current(editor);
  const std::uint32_t gained = frame_behind_left_side(editor);
  if (gained == 0 || !has_room_for(editor.document, gained)) return Result::nothing;
  before_current(editor).part_size += gained;
  editor.selection.cursor += gained;
  return finish(editor);
}

Result trim_left_in(Editor& editor) {
  if (editor.document.current_part == 0) return Result::nothing;
  const EditPosition frame =
      frame_before_in(editor.document, index_before(editor.document), current(editor).part_beg,
                      editor.selection.current_frame);
  if (frame == no_position) return Result::nothing;
  const std::uint32_t lost = current(editor).part_beg - frame;
  if (lost >= before_current(editor).part_size) return Result::nothing;
  before_current(editor).part_size -= lost;
  current(editor).part_iscue = 0;
  if (lost <= editor.selection.cursor) editor.selection.cursor -= lost;
  return finish(editor);
}

Result trim_right_in(Editor& editor) {
  Part& part = current(editor);
  const EditPosition frame = next_frame_in(editor.document, editor.document.current_part,
                                           part.part_beg, editor.selection.current_frame);
  if (frame == no_position) return Result::nothing;
  const std::uint32_t lost = frame - part.part_beg;
  if (lost >= part.part_size) return Result::nothing;
  part.part_iscue = 0;
  part.part_size -= lost;
  part.part_filepos += lost;
  return finish(editor);
}

Result trim_right_out(Editor& editor) {
  if (!has_gap(editor.document, editor.document.current_part)) return make_cue_of_current(editor);
  Part& part = current(editor);
  const std::uint32_t first_audio = editor.document.files[part.part_file].first_audio;
  if (part.part_filepos <= first_audio || !has_room_for(editor.document, frame_unit))
    return Result::nothing;
  const std::uint32_t gained =
      frame_in_front_of_right_side(editor, std::min(part.part_filepos - first_audio, frame_unit));
  if (gained == 0) return Result::nothing;
  part.part_filepos -= gained;
  part.part_size += gained;
  return finish(editor);
}

Result move_cue_left(Editor& editor) {
  if (editor.document.current_part == 0) return Result::nothing;
  return move_cue_to(editor,
                     frame_before_in(editor.document, index_before(editor.document),
                                     current(editor).part_beg, editor.selection.current_frame));
}

Result move_cue_right(Editor& editor) {
  if (editor.document.current_part == 0) return Result::nothing;
  return move_cue_to(
      editor, next_frame_in(editor.document, editor.document.current_part, current(editor).part_beg,
                            editor.selection.current_frame));
}

}  // namespace corvelin
