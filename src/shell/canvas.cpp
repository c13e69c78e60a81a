// SPDX-License-Identifier: GPL-2.0-or-later
// Shapes made of rectangles.
#include "shell/canvas.h"

namespace corvelin {

void outline(Canvas& canvas, const Rect& area, Colour colour) {
  if (area.is_empty()) return;
  canvas.fill({area.left, area.top, area.right, area.top + 1}, colour);
  canvas.fill({area.left, area.bottom - 1, area.right, area.bottom}, colour);
  canvas.fill({area.left, area.top, area.left + 1, area.bottom}, colour);
  canvas.fill({area.right - 1, area.top, area.right, area.bottom}, colour);
}

}  // namespace corvelin
