// SPDX-License-Identifier: GPL-2.0-or-later
// The map of the whole edited stream below the graph.
#pragma once

#include "shell/canvas.h"
#include "shell/editor_view.h"

namespace corvelin {

struct Editor;

void draw_map(const Editor& editor, const EditorView& view, Canvas& canvas);

}  // namespace corvelin
