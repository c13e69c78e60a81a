// SPDX-License-Identifier: GPL-2.0-or-later
// Text on the view.
#include "desktop/qt_canvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <span>

#include "desktop/look.h"
#include "desktop/qt_text.h"

namespace corvelin {

namespace {

std::span<std::uint32_t> pixels_of(QImage& image) {
  return {reinterpret_cast<std::uint32_t*>(image.bits()),
          static_cast<std::size_t>(image.sizeInBytes()) / sizeof(std::uint32_t)};
}

}  // namespace

QFont font_of_height(int height, bool is_bold) {
  constexpr int trial = 100;  // pixels
  QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  font.setWeight(is_bold ? QFont::Bold : QFont::Normal);
  font.setPixelSize(trial);
  const QFontMetricsF metrics(font);
  const double line = metrics.ascent() + metrics.descent();
  font.setPixelSize(std::max(static_cast<int>(std::lround(height * trial / line)), 1));
  return font;
}

QtCanvas::QtCanvas(QImage& image)
    : PixelCanvas(pixels_of(image), image.width(), image.height(),
                  static_cast<std::size_t>(image.bytesPerLine()) / sizeof(std::uint32_t)),
      painter_(&image) {}

void QtCanvas::begin_text(const TextStyle& style) {
  painter_.setFont(font_of_height(style.height, style.is_bold));
  painter_.setPen(from_setting(style.colour));
}

int QtCanvas::text(int x, int y, std::string_view text, const TextStyle& style) {
  begin_text(style);
  const QString shown = as_qstring(text);
  const QFontMetrics metrics = painter_.fontMetrics();
  const int width = metrics.horizontalAdvance(shown);
  if (style.align == TextAlign::centre) x -= width / 2;
  if (style.align == TextAlign::right) x -= width;
  if (style.ground) fill({x, y, x + width, y + style.height}, *style.ground);
  const int spare = style.height - metrics.ascent() - metrics.descent();
  painter_.drawText(x, y + metrics.ascent() + spare / 2, shown);
  return width;
}

void QtCanvas::paragraph(const Rect& box, std::string_view text, const TextStyle& style) {
  begin_text(style);
  painter_.drawText(QRect(box.left, box.top, box.width(), box.height()),
                    Qt::TextWordWrap | Qt::TextDontClip, as_qstring(text));
}

}  // namespace corvelin
