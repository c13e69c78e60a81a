// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that change levels: gains at part borders, between which the level slides. Nothing
// is decoded; the gains are written into the frames as these pass. Where they need a border they
// make one, and with too many parts for that they are refused.
#pragma once

#include <cstdint>
#include <string>

#include "edit/outcome.h"
#include "model/document.h"

namespace corvelin {

struct Editor;

/// What a person may set, in steps of 1.5 dB.
constexpr int lowest_level = -60;
constexpr int highest_level = 32;

/// The level at the silent end of a fade, by the setting `lowest_gain`.
std::int16_t bottom_gain();

/// A gain as text, a step counted as 1.5 dB: "-4.5 dB", "+0.0 dB".
std::string gain_text(int gain);

/// One step up or down: the part of the cursor, or the end of the stream when it stands there. Does
/// nothing in a stream without such levels.
Result part_level_up(Editor& editor);
Result part_level_down(Editor& editor);

/// In front of a fade, which goes from or to the cursor without a selection. Refuses where it would
/// be neither, at the ends of the stream and across its middle, and where other parts lie between
/// the selection and the stream's end.
Outcome need_fade(const Editor& editor);

/// Fades out from the selection's begin to the end of the stream, or in from the start to the
/// selection's end, by the half in which it lies. Clears the selection.
void simple_fade(Editor& editor);

/// The same with a border that lets two thirds of the change happen in the last third of the way.
void two_stage_fade(Editor& editor);

/// Adds steps to all gains of the selection, with one-frame edges where it doesn't reach an end of
/// the stream. The selection stays, between its edges.
void shift_selection_level(Editor& editor, int change);

}  // namespace corvelin
