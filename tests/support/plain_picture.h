// SPDX-License-Identifier: GPL-2.0-or-later
// A canvas on pixels of its own without fonts: a letter of a text is half as wide as high, and not
// drawn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "shell/pixel_canvas.h"

namespace corvelin::test {

struct PictureMemory {
  std::vector<std::uint32_t> pixels;
};

class PlainPicture : private PictureMemory, public PixelCanvas {
 public:
  PlainPicture(int width, int height)
      : PictureMemory{std::vector<std::uint32_t>(static_cast<std::size_t>(width) *
                                                 static_cast<std::size_t>(height))},
        PixelCanvas(pixels, width, height, static_cast<std::size_t>(width)) {}

  int text(int, int, std::string_view text, const TextStyle& style) override {
    return static_cast<int>(text.size()) * style.height / 2;
  }
  void paragraph(const Rect&, std::string_view, const TextStyle&) override {}
};

}  // namespace corvelin::test
