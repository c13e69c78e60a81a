// SPDX-License-Identifier: GPL-2.0-or-later
// The view's canvas over a Qt image: pixels by the core's own rules, text by Qt's fonts.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>

#include "shell/pixel_canvas.h"

namespace corvelin {

class QtCanvas : public PixelCanvas {
 public:
  /// `image` has the format RGB32, a ratio of 1, and outlives the canvas.
  explicit QtCanvas(QImage& image);

  int text(int x, int y, std::string_view text, const TextStyle& style) override;
  void paragraph(const Rect& box, std::string_view text, const TextStyle& style) override;

 private:
  void begin_text(const TextStyle& style);

  QPainter painter_;
};

/// The user's own font with lines of this height in pixels.
QFont font_of_height(int height, bool is_bold);

}  // namespace corvelin
