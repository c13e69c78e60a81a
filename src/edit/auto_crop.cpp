// SPDX-License-Identifier: GPL-2.0-or-later
// Search for silence at both ends of the stream.
#include "edit/auto_crop.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "audio/sample_reader.h"
#include "document/open_state.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::uint32_t frames_a_block = 6;

int silence_threshold() {
  const unsigned bottom =
      batch_active && batch_bottom != 0 ? batch_bottom : unsigned{settings.lowest_gain};
  return static_cast<int>(std::pow(10.0, bottom / -20.0) * 32767);
}

void crop_head(SampleReader& reader, int threshold) {
  reader.move_to(0);
  while (reader.pos() < document.total_size) {
    const EditPosition block = reader.pos();
    const bool is_loud = reader.read_peak(frames_a_block) > threshold;
    if (is_loud) delete_range(document, 0, block);
    if (is_loud || reader.pos() <= block) return;
  }
}

// Where the search for the tail begins: far enough from the end, but not at the start of hours.
EditPosition tail_start() {
  const std::uint32_t total = document.total_size;
  return frame_at(document, total > average_frames(3000) ? total - average_frames(2000) : total / 2,
                  selection.current_frame);
}

// Where it goes on when all behind `begin` is silent.
EditPosition earlier_start(EditPosition begin) {
  const std::uint32_t step = average_frames(2000);
  const EditPosition earlier =
      begin > step ? frame_at(document, begin - step, selection.current_frame) : 0;
  return earlier < begin ? earlier : 0;
}

// The end of the first silent block behind the last loud one of those that begin in the stretch, or
// the end of the stream where that is loud; nothing where all is silent.
std::optional<EditPosition> end_of_loudness(SampleReader& reader, EditPosition begin,
                                            EditPosition end, int threshold) {
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

void crop_tail(SampleReader& reader, int threshold) {
  EditPosition begin = tail_start();
  if (begin > document.total_size) begin = 0;
  auto found = end_of_loudness(reader, begin, document.total_size, threshold);
  while (!found && begin > 0) {
    const EditPosition end = std::exchange(begin, earlier_start(begin));
    found = end_of_loudness(reader, begin, end, threshold);
  }
  if (found) delete_range(document, *found, document.total_size);
}

// Of the stream as it is now.
bool open_reader(SampleReader& reader) {
  return open_at_cursor(reader, document, selection, document.total_size, frames_a_block);
}

}  // namespace

std::uint8_t batch_bottom = 0;

bool auto_crop() {
  const int threshold = silence_threshold();
  const EditPosition remembered = selection.cursor;
  selection.sel_beg = selection.sel_end = no_position;
  SampleReader reader(document);
  if (!open_reader(reader)) {
    selection.cursor = remembered;
    return false;
  }
  crop_head(reader, threshold);
  if (open_reader(reader)) crop_tail(reader, threshold);
  selection.current_frame = reader.place().frame;
  selection.cursor =
      std::min(frame_at(document, remembered, selection.current_frame), document.total_size);
  document.current_part = part_at(document, selection.cursor);
  return true;
}

}  // namespace corvelin
