// SPDX-License-Identifier: GPL-2.0-or-later
// The layers of the graph that go by its pixel columns: selection, bars, bit rates, borders, level
// handles, cursor and time marks.
#pragma once

#include "shell/canvas.h"
#include "shell/editor_view.h"

namespace corvelin {

struct Editor;

/// Draws what was sampled, and notes in `view.handles` where the handles came to stand.
void draw_graph(const Editor& editor, EditorView& view, Canvas& canvas);

}  // namespace corvelin
