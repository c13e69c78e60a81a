// SPDX-License-Identifier: GPL-2.0-or-later
// The view of the document: the graph of the frames round the cursor, below it the map of the whole
// stream, over the graph the level meter, the big timer and the names. Owns what is drawn where and
// in which order; the graph's frames come from the sampler, the pixels go to a canvas. Between two
// drawings it keeps no pixels, only what the mouse has to find again.
#pragma once

#include <vector>

#include "model/graph_sampling.h"
#include "shell/canvas.h"
#include "shell/view_layout.h"

namespace corvelin {

struct Editor;

struct EditorView {
  ViewLayout layout;
  GraphSamples samples;       // of the last drawing
  std::vector<Rect> handles;  // of levels, as they were drawn
  bool hint_is_over = false;  // on what can't be done with the stream; the user has seen it
};

/// After every change of the view's size (in device pixels), the scale or the setting `zoom`.
/// `display_scale` is device pixels per 1/96 inch.
void lay_out_view(EditorView& view, int width, int height, float display_scale);

/// Draws all of the view: the document, or the start screen without one; while a recording is armed
/// what that tells.
void view_redraw(const Editor& editor, EditorView& view, Canvas& canvas);

}  // namespace corvelin
