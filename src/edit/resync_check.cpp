// SPDX-License-Identifier: GPL-2.0-or-later
// The walk that looks for re-syncs.
#include "edit/resync_check.h"

#include <fmt/format.h>

#include <cstdint>
#include <vector>

#include "edit/editor.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/frame_reader.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "platform/text/text.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::uint32_t most_frames_a_read = 999;

// Marks the frame behind the one that the reader found again. False when it lies outside the range
// or there is no room for a cue.
bool mark_resync(Editor& editor, const FrameCursor& cursor, EditPosition end, int number) {
  const EditPosition behind = cursor.pos + cursor.frame.frame_length;
  const EditPosition frame = find_frame_forward(editor.document, part_at(editor.document, behind),
                                                behind, cursor.frame.sample_rate)
                                 .pos;
  if (frame >= end) return false;
  const PartIndex made = make_border(editor.document, frame);
  if (made >= part_count(editor.document)) return false;
  Part& part = editor.document.parts[made];
  part.part_title = bytes_to_wide(fmt::format("Re-sync {}", number), true);
  part.part_artist.clear();
  part.part_iscue = 1;
  forget_stashed_texts(editor.selection);
  return true;
}

int mark_resyncs(Editor& editor, EditPosition begin, EditPosition end) {
  std::vector<std::uint8_t> buffer(200000);
  FrameCursor cursor = frame_cursor_at(editor.document, begin);
  int count = 0;
  while (cursor.pos < end && end - cursor.pos > 2) {
    const FramesRead read = read_frames(editor.document, buffer, cursor, end, most_frames_a_read);
    if (read.resync_count == 0 || cursor.pos >= end) continue;
    if (!mark_resync(editor, cursor, end, count + 1)) break;
    cursor.part = part_at(editor.document, cursor.pos);  // the marks are new parts
    ++count;
  }
  return count;
}

}  // namespace

Outcome check_resyncs(Editor& editor) {
  const bool has_range = has_selected_range(editor.selection);
  const EditPosition begin = has_range ? editor.selection.sel_beg : 0;
  const EditPosition end = has_range ? editor.selection.sel_end : editor.document.total_size;
  const int count = mark_resyncs(editor, begin, end);
  return {Result::done, MessageBox{.caption = menu_text_plain(ui_text(row::check_resyncs)),
                                   .text = fmt::format("{} Re-sync(s)", count),
                                   .icon = BoxIcon::information}};
}

}  // namespace corvelin
