// SPDX-License-Identifier: GPL-2.0-or-later
// Search for silence at both ends of the stream.
#include "edit/auto_crop.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "audio/sample_reader.h"
#include "edit/editor.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::uint32_t frames_a_block = 6;

int silence_threshold(unsigned bottom) {
  return static_cast<int>(std::pow(10.0, bottom / -20.0) * 32767);
}

void crop_head(Editor& editor, SampleReader& reader, int threshold) {
  reader.move_to(0);
  while (reader.pos() < editor.document.total_size) {
    const EditPosition block = reader.pos();
    const bool is_loud = reader.read_peak(frames_a_block) > threshold;
    if (is_loud) delete_range(editor.document, 0, block);
    if (is_loud || reader.pos() <= block) return;
  }
}

// Where the search for the tail begins: far enough from the end, but not at the start of hours.
EditPosition tail_start(Editor& editor) {
  const std::uint32_t total = editor.document.total_size;
  return frame_at(editor.document,
                  total > average_frames(editor.document, 3000)
                      ? total - average_frames(editor.document, 2000)
                      : total / 2,
                  editor.selection.current_frame);
}

// Where it goes on when all behind `begin` is silent.
EditPosition earlier_start(Editor& editor, EditPosition begin) {
  const std::uint32_t step = average_frames(editor.document, 2000);
  const EditPosition earlier =
      begin > step ? frame_at(editor.document, begin - step, editor.selection.current_frame) : 0;
  return earlier < begin ? earlier : 0;
}

// The end of the first silent block behind the last loud one of those that begin in the stretch, or
// the end of the stream where that is loud; nothing where all is silent.
std::optional<EditPosition> end_of_loudness(const Document& document, SampleReader& reader,
                                            EditPosition begin, EditPosition end, int threshold) {
  std::optional<EditPosition> found;
  bool was_loud = false;
  reader.move_to(begin);
  while (reader.pos() < document.total_size && (reader.pos() < end || was_loud)) {
    const EditPosition block = reader.pos();
    const bool is_loud = reader.read_peak(frames_a_block) >= threshold;
    if (is_loud) found = document.total_size;
    if (was_loud && !is_loud) found = reader.pos();
    was_loud = is_loud;
    if (reader.pos() <= block) break;
  }
  return found;
}

void crop_tail(Editor& editor, SampleReader& reader, int threshold) {
  EditPosition begin = tail_start(editor);
  if (begin > editor.document.total_size) begin = 0;
  auto found =
      end_of_loudness(editor.document, reader, begin, editor.document.total_size, threshold);
  while (!found && begin > 0) {
    const EditPosition end = std::exchange(begin, earlier_start(editor, begin));
    found = end_of_loudness(editor.document, reader, begin, end, threshold);
  }
  if (found) delete_range(editor.document, *found, editor.document.total_size);
}

// Of the stream as it is now.
bool open_reader(Editor& editor, SampleReader& reader) {
  return open_at_cursor(reader, editor.document, editor.selection, editor.document.total_size,
                        frames_a_block);
}

}  // namespace

bool auto_crop(Editor& editor) { return auto_crop_below(editor, settings.lowest_gain); }

bool auto_crop_below(Editor& editor, unsigned bottom) {
  const int threshold = silence_threshold(bottom);
  const EditPosition remembered = editor.selection.cursor;
  editor.selection.sel_beg = editor.selection.sel_end = no_position;
  SampleReader reader(editor.document);
  if (!open_reader(editor, reader)) {
    editor.selection.cursor = remembered;
    return false;
  }
  crop_head(editor, reader, threshold);
  if (open_reader(editor, reader)) crop_tail(editor, reader, threshold);
  editor.selection.current_frame = reader.place().frame;
  editor.selection.cursor =
      std::min(frame_at(editor.document, remembered, editor.selection.current_frame),
               editor.document.total_size);
  editor.document.current_part = part_at(editor.document, editor.selection.cursor);
  return true;
}

}  // namespace corvelin
