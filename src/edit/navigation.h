// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that move the cursor. They count from where the listener is.
#pragma once

namespace corvelin {

void skip_back_small();  // by `frameskiplo` average frames and one more
void skip_back_large();  // by `frameskiphi` and one more
void skip_forward_small();
void skip_forward_large();
void frame_back();
void frame_forward();
void rewind();
void go_to_track_end();
void go_to_selection_begin();  // of which there is one
void go_to_selection_end();
void go_to_previous_range();  // the start of the current part, then of the one before
void go_to_next_range();      // the end of the current part, then of the next

void zoom_in();   // doubles `zoom` up to 32
void zoom_out();  // halves it down to 1

}  // namespace corvelin
