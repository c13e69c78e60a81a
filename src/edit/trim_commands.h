// SPDX-License-Identifier: GPL-2.0-or-later
// Fine adjustment of the highlighted edit point by single frames: the sides of a cut, and the place
// of a cue. These commands are pressed many times in a row: such a run is one undo step.
#pragma once

#include "edit/outcome.h"

namespace corvelin {

struct Editor;

// The side in front of the cut: one frame more of what was removed, or one frame less. Nothing at
// part 0. The cursor moves along with the cut. The flag is set when there is no gap left to take
// from, and cleared by a frame that goes.
Result trim_left_out(Editor& editor);
Result trim_left_in(Editor& editor);

// The side behind the cut, also that of part 0. The cursor stays. A part keeps its last frame.
Result trim_right_in(Editor& editor);
Result trim_right_out(Editor& editor);

// Moves an edit point without a gap by one frame along the audio. The stream stays the same. A real
// cut does not move, nor does one pass another.
Result move_cue_left(Editor& editor);
Result move_cue_right(Editor& editor);

}  // namespace corvelin
