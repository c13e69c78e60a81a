// SPDX-License-Identifier: GPL-2.0-or-later
// Fills rectangles of pixels, whole, dotted or hatched.
#include "shell/pixel_canvas.h"

#include <algorithm>

namespace corvelin {

namespace {

std::uint32_t as_pixel(Colour colour) {
  return 0xFF000000 | (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

}  // namespace

void PixelCanvas::fill(const Rect& area, Colour colour, Pattern pattern) {
  const int left = std::max(area.left, 0);
  const int right = std::min(area.right, width_);
  const int top = std::max(area.top, 0);
  const int bottom = std::min(area.bottom, height_);
  if (left >= right) return;
  const std::uint32_t pixel = as_pixel(colour);
  for (int y = top; y < bottom; ++y) {
    if (pattern == Pattern::dots && y % 2 != 0) continue;
    const std::span<std::uint32_t> row =
        pixels_.subspan(static_cast<std::size_t>(y) * stride_, static_cast<std::size_t>(width_));
    if (pattern == Pattern::hatch) {
      // The first x at or behind `left` where x + y is a multiple of the pitch.
      int x = left + (hatch_pitch - (left + y) % hatch_pitch) % hatch_pitch;
      for (; x < right; x += hatch_pitch) row[static_cast<std::size_t>(x)] = pixel;
    } else {
      std::fill(row.begin() + left, row.begin() + right, pixel);
    }
  }
}

}  // namespace corvelin
