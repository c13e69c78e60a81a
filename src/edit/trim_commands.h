// Fine adjustment of the highlighted edit point by single frames: the sides of a cut, and the place
// of a cue. These commands are pressed many times in a row; they take no undo step and leave
// `document_modified` alone.
#pragma once

namespace corvelin {

// The side in front of the cut: one frame more of what was removed, or one frame less. Nothing at
// part 0. The cursor moves along with the cut. The flag is set when there is no gap left to take
// from, and cleared by a frame that goes.
void trim_left_out();
void trim_left_in();

// The side behind the cut, also that of part 0. The cursor stays. A part keeps its last frame.
void trim_right_in();
void trim_right_out();

// Moves an edit point without a gap by one frame along the audio. The stream stays the same. A real
// cut does not move, nor does one pass another.
void move_cue_left();
void move_cue_right();

}  // namespace corvelin
