// SPDX-License-Identifier: GPL-2.0-or-later
// The dip around a cut.
#include "edit/mute_cut.h"

#include <cstdint>

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/places.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "model/stream_info.h"

namespace corvelin {

namespace {

constexpr std::int16_t bottom_gain = -32;  // steps of 1.5 dB

// Makes a border at the cursor and gives its part a title that shows which way the level goes.
void mark_slope(Editor& editor, const char16_t* title) {
  const PartIndex made =
      delete_range(editor.document, editor.selection.cursor, editor.selection.cursor);
  if (made >= part_count(editor.document)) return;
  editor.document.current_part = made;
  editor.document.parts[made].part_title = title;
}

}  // namespace

void mute_cut(Editor& editor) {
  const EditPosition remembered = editor.selection.cursor;
  // The dip is made where the cursor stands, which need not be the part that was clicked.
  editor.document.current_part = part_at(editor.document, editor.selection.cursor);
  Part& part = editor.document.parts[editor.document.current_part];
  part.part_gainbeg = bottom_gain;

  seek_to(editor.playback,
          frame_before(editor.document, part.part_beg, editor.selection.current_frame));
  mark_slope(editor, u"\\/");
  for (int i = 0; i < 3; ++i)
    seek_to(editor.playback, editor.selection.cursor + frame_length_at_cursor(editor));
  mark_slope(editor, u"/\\");
  editor.selection.cursor = remembered;
}

}  // namespace corvelin
