// SPDX-License-Identifier: GPL-2.0-or-later
// A canvas on 32-bit pixels in memory that draws everything but text: whoever has fonts derives
// from it. So the pixels of the view's rules are the same wherever it is shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "shell/canvas.h"

namespace corvelin {

class PixelCanvas : public Canvas {
 public:
  /// Rows of `stride` pixels each, of which `width` are drawn on. A pixel is 0xFFRRGGBB. The
  /// pixels stay where they are while the canvas lives.
  PixelCanvas(std::span<std::uint32_t> pixels, int width, int height, std::size_t stride)
      : pixels_(pixels), width_(width), height_(height), stride_(stride) {}

  void fill(const Rect& area, Colour colour, Pattern pattern = Pattern::solid) override;

 private:
  std::span<std::uint32_t> pixels_;
  int width_;
  int height_;
  std::size_t stride_;
};

}  // namespace corvelin
