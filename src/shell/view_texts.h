// SPDX-License-Identifier: GPL-2.0-or-later
// What is written over the graph: the big timer, and the lines of names and hints.
#pragma once

#include "shell/canvas.h"
#include "shell/editor_view.h"

namespace corvelin {

struct Editor;

void draw_big_timer(const Editor& editor, const ViewLayout& layout, Canvas& canvas);

/// The names of the current part and the album, and at the top the fast play, what the next cut
/// will be called, or a hint, which goes for good once the cursor was seen beyond 30 seconds.
void draw_name_lines(const Editor& editor, EditorView& view, Canvas& canvas);

}  // namespace corvelin
