// What commands need of the document before they begin.
#pragma once

#include <cstddef>

#include "edit/outcome.h"

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

/// Whether a selection with a length is there. It is told when not, as by the next ones.
bool require_selected_range();

/// Whether the stream's level can be changed inside its frames, which Layer II and AAC don't allow.
bool require_level_control();

/// Whether the part table takes so many parts more.
bool require_room_for_parts(std::size_t count);

}  // namespace corvelin
