// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that set and clear cue flags: where a track starts in a cue sheet and in a split
// save.
#pragma once

#include "edit/outcome.h"

namespace corvelin {

struct Editor;

/// Makes cues at both ends of the selected range and clears the selection. An end for which the
/// table has no room is left out.
void cues_at_selection_ends(Editor& editor);

// Sets or clears the flag of each part that starts in the selection, both ends included, or of all
// parts without a selection. There is nothing to do where none starts.
Result set_cue_flags(Editor& editor);
Result remove_cue_flags(Editor& editor);

/// Sets the flag of each edit point that neither a gap nor a level makes, and clears it of all
/// others but the first part.
void cue_pure_splits(Editor& editor);

/// Turns the flag of the current part over.
void toggle_cue(Editor& editor);

}  // namespace corvelin
