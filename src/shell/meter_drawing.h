// SPDX-License-Identifier: GPL-2.0-or-later
// The level meter at the graph's right edge.
#pragma once

#include "shell/canvas.h"
#include "shell/view_layout.h"

namespace corvelin {

struct Editor;

/// Whether there is one channel: of the recording that is armed, else of the stream.
bool has_mono_meter(const Editor& editor);

void draw_meter(const Editor& editor, const ViewLayout& layout, Canvas& canvas);

}  // namespace corvelin
