// SPDX-License-Identifier: GPL-2.0-or-later
// What commands need of the document before they begin.
#pragma once

#include <cstddef>

#include "edit/outcome.h"
#include "model/document.h"

namespace corvelin {

/// Nothing is done without a selection, or without one whose ends differ.
Outcome need_selection();
Outcome need_two_ends();

/// Refused without a selection that has a length.
Outcome need_range();

/// Nothing is done but at a real cut of a stream whose level can be changed.
Outcome need_mutable_cut();

/// Nothing is done without a step to take back, but for a beep.
Outcome need_undo_step();

/// Refused where the stream's level can't be changed inside its frames: in Layer II and AAC.
Outcome need_level_control();

/// Refused where the part table doesn't take so many parts more.
Outcome need_room_for_parts(std::size_t count);

/// Refuses to set cues from `pos` on, for which the part table has no room.
Outcome refuse_cues_from(EditPosition pos);

/// Whether a need is met. If not, the user is told why. For what is not a check in the table.
bool require(const Outcome& need);

}  // namespace corvelin
