// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that take audio out of the stream and bring it back. None touches a file: what is
// cut stays in its source, and the gap between two parts is all that is needed to restore it. Each
// works on the selection, the cursor and `current_part` of an open document.
#pragma once

#include "edit/outcome.h"

namespace corvelin {

struct Editor;

/// Takes the selected range out; a selection without length becomes a cue instead. Clears the
/// selection.
///
/// The part behind a cut keeps the names and the cue flag of what stood at the range's end, and its
/// level comes back to what it was there one frame behind the cut. A range that can't be taken
/// out (the whole stream, or a full table) is refused and changes nothing.
Outcome cut_or_cue(Editor& editor);

/// Brings back what is missing at the highlighted edit point, at the stream's head with
/// `current_part` 0, at its tail with the cursor at the end; an edit point without a gap goes. What
/// came back is selected, so that the next Cut/Cue makes the same cut again, with its flag and
/// names.
Outcome edit_restore(Editor& editor);

/// Takes out all but the selection, and clears it. Refused when the table is full.
Outcome crop(Editor& editor);

/// Takes all edit points out of the selection, and brings the cuts in it back. Where that is no
/// stretch of one file the range stays out, and the user is told.
Outcome remove_edit_points(Editor& editor);

}  // namespace corvelin
