// SPDX-License-Identifier: GPL-2.0-or-later
// What commands need of the document before they begin.
#pragma once

#include <cstddef>

#include "edit/outcome.h"
#include "model/document.h"

namespace corvelin {

struct Editor;

/// Nothing is done without a selection, or without one whose ends differ.
Outcome need_selection(const Editor& editor);
Outcome need_two_ends(const Editor& editor);

/// Refused without a selection that has a length.
Outcome need_range(const Editor& editor);

/// Nothing is done but at a real cut of a stream whose level can be changed.
Outcome need_mutable_cut(const Editor& editor);

/// Nothing is done without a step to take back, but for a beep.
Outcome need_undo_step(const Editor& editor);

/// Refused where the stream's level can't be changed inside its frames: in Layer II and AAC.
Outcome need_level_control(const Document& document);

/// Refused where the part table doesn't take so many parts more.
Outcome need_room_for_parts(const Document& document, std::size_t count);

/// Refuses to set cues from `pos` on, for which the part table has no room.
Outcome refuse_cues_from(const Document& document, EditPosition pos);

/// Whether a need is met. If not, the user is told why. For what is not a check in the table.
bool require(const Outcome& need);

}  // namespace corvelin
