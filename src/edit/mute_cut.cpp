// SPDX-License-Identifier: GPL-2.0-or-later
// The dip around a cut.
#include "edit/mute_cut.h"

#include <cstdint>

#include "audio/playback.h"
#include "audio/the_player.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"
#include "model/the_document.h"

namespace corvelin {

namespace {

constexpr std::int16_t bottom_gain = -32;  // steps of 1.5 dB

// Makes a border at the cursor and gives its part a title that shows which way the level goes.
void mark_slope(const char16_t* title) {
  const PartIndex made = delete_range(document, selection.cursor, selection.cursor);
  if (made >= part_count(document)) return;
  document.current_part = made;
  document.parts[made].part_title = title;
}

}  // namespace

void mute_cut() {
  const EditPosition remembered = selection.cursor;
  // The dip is made where the cursor stands, which need not be the part that was clicked.
  document.current_part = part_at(document, selection.cursor);
  Part& part = document.parts[document.current_part];
  part.part_gainbeg = bottom_gain;

  seek_to(playback, frame_before(document, part.part_beg, selection.current_frame));
  mark_slope(u"\\/");
  for (int i = 0; i < 3; ++i) seek_to(playback, selection.cursor + frame_length_at_cursor());
  mark_slope(u"/\\");
  selection.cursor = remembered;
}

}  // namespace corvelin
