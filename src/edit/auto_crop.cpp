// Search for silence at both ends of the stream.
#include "edit/auto_crop.h"

#include <algorithm>
#include <cmath>

#include "audio/peak_seek.h"
#include "document/open_state.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/settings.h"

namespace corvelin {

namespace {

constexpr std::uint32_t frames_a_block = 6;

int silence_threshold() {
  const unsigned bottom =
      batch_active && batch_bottom != 0 ? batch_bottom : unsigned{settings.lowest_gain};
  return static_cast<int>(std::pow(10.0, bottom / -20.0) * 32767);
}

std::uint16_t measure_block() {
  document.current_part = part_at(selection.cursor);
  return peak_seek_read(frames_a_block);
}

void crop_head(int threshold) {
  constexpr int most_blocks = 500;
  selection.cursor = 0;
  for (int i = 0; i < most_blocks && selection.cursor < document.total_size; ++i) {
    const EditPosition block = selection.cursor;
    if (measure_block() <= threshold) continue;
    delete_range(0, block);
    return;
  }
}

// Where the search for the tail begins: far enough from the end, but not at the start of hours.
EditPosition tail_start() {
  const std::uint32_t total = document.total_size;
  return frame_at(total > average_frames(3000) ? total - average_frames(2000) : total / 2);
}

void crop_tail(int threshold) {
  constexpr int most_blocks = 1000;
  EditPosition candidate = document.total_size;
  int peak = 0;
  bool is_measured = false;
  for (int i = 0; i < most_blocks && selection.cursor < document.total_size; ++i) {
    const int peak_before = peak;
    peak = measure_block();
    is_measured = true;
    if (peak_before >= threshold && peak < threshold) candidate = selection.cursor;
  }
  peak_seek_close();
  if (!is_measured || peak >= threshold) return;
  delete_range(candidate, document.total_size);
}

}  // namespace

std::uint8_t batch_bottom = 0;

bool auto_crop() {
  const int threshold = silence_threshold();
  const EditPosition remembered = selection.cursor;
  selection.sel_beg = selection.sel_end = no_position;
  if (!peak_seek_open(frames_a_block)) {
    selection.cursor = remembered;
    return false;
  }
  crop_head(threshold);
  peak_seek_close();
  const EditPosition tail = tail_start();
  if (peak_seek_open(frames_a_block)) {
    selection.cursor = tail;
    crop_tail(threshold);
  }
  selection.cursor = std::min(frame_at(remembered), document.total_size);
  return true;
}

}  // namespace corvelin
