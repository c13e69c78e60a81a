// The level meter at the graph's right edge.
#pragma once

#include "shell/canvas.h"
#include "shell/view_layout.h"

namespace corvelin {

void draw_meter(const ViewLayout& layout, Canvas& canvas);

}  // namespace corvelin
