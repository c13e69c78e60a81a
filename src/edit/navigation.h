// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that move the cursor. They count from where the listener is.
#pragma once

namespace corvelin {

struct Editor;

void skip_back_small(Editor& editor);  // by `frameskiplo` average frames and one more
void skip_back_large(Editor& editor);  // by `frameskiphi` and one more
void skip_forward_small(Editor& editor);
void skip_forward_large(Editor& editor);
void frame_back(Editor& editor);
void frame_forward(Editor& editor);
void rewind(Editor& editor);
void go_to_track_end(Editor& editor);
void go_to_selection_begin(Editor& editor);  // of which there is one
void go_to_selection_end(Editor& editor);
void go_to_previous_range(Editor& editor);  // the start of the current part, then of the one before
void go_to_next_range(Editor& editor);      // the end of the current part, then of the next

void zoom_in();   // doubles `zoom` up to 32
void zoom_out();  // halves it down to 1

}  // namespace corvelin
