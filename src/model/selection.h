// SPDX-License-Identifier: GPL-2.0-or-later
// The places that the user works at: the selection and the cursor. The next cut turns a selection
// without length into a cue, and removes one with a length. Cuts, playback and projects read this
// record; the commands that change it are elsewhere.
#pragma once

#include <cstdint>
#include <string>

#include "model/document.h"

namespace corvelin {

/// With a selection `sel_beg` <= `sel_end`; without one both are `no_position`. Every place lies on
/// a frame start or at the end of the stream.
struct Selection {
  EditPosition sel_beg = no_position;
  EditPosition sel_end = no_position;
  std::uint32_t sel_iscue = 0;  // 1: the next cut makes its border a cue
  // Of the border that a restore took out last, so that the next cut can give it back:
  std::uint32_t sel_cue_locked = 0;  // 1: it was a cue, and `sel_iscue` stays 1
  std::int16_t sel_gain = 0;         // gain steps at the selection's begin
  std::int16_t sel_gain_end = 0;     // and at its end
  std::u16string sel_title;          // texts of the part that began there
  std::u16string sel_artist;
  EditPosition cursor = 0;
  /// The frame that the last step, seek or search of the user found, as the status shows it; none
  /// (`version` 0) where that failed.
  FrameInfo current_frame;
};

/// Whether there is a selection, and whether it has a length.
bool has_selection(const Selection& selection);
bool has_selected_range(const Selection& selection);

/// Gives both ends the place `pos` when one of them is none. Returns whether it did.
bool ensure_selection(Selection& selection, EditPosition pos);

/// Moves one end, at most to the end of the stream, pushing the other along where they would cross.
/// Ignores `no_position`.
void set_sel_begin(const Document& document, Selection& selection, EditPosition pos);
void set_sel_end(const Document& document, Selection& selection, EditPosition pos);

/// Sets both ends, which are in order, or none of them.
void set_selection(Selection& selection, EditPosition begin, EditPosition end);

/// No selection, and nothing left of a border that was taken out. The cursor stays.
void clear_selection(Selection& selection);

/// Moves the cursor to the first frame at or behind `pos`, or to the end of the stream, and
/// `current_part` with it. That frame is the one shown; none is where garbage reaches to the end of
/// the stream. Ignores a position that wrapped around below 0. The user's way there is `seek_to`,
/// which takes playback along.
void move_cursor(Document& document, Selection& selection, EditPosition pos);

}  // namespace corvelin
