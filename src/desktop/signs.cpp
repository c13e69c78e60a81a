// SPDX-License-Identifier: GPL-2.0-or-later
// Signs on a grid of 16 by 16 units.
#include "desktop/signs.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace corvelin {

namespace {

// Bars of a graph with the cursor over them.
class ProgramEngine : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& area, QIcon::Mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(area.topLeft());
    painter->scale(area.width() / 16.0, area.height() / 16.0);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0x24, 0x2B, 0x31));
    painter->drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3.2, 3.2);
    painter->setBrush(QColor(0x35, 0xA6, 0xD2));
    constexpr double heights[] = {4, 7, 10, 6, 8, 3.5};
    double x = 2;
    for (const double height : heights) {
      painter->drawRect(QRectF(x, 13 - height, 1.3, height));
      x += 2.15;
    }
    painter->setBrush(QColor(0xFF, 0xE2, 0x3D));
    painter->drawRect(QRectF(9.85, 2, 0.9, 12));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new ProgramEngine(*this); }
};

// A sign on a coloured ground: a disc, or for a warning a triangle.
class BoxEngine : public QIconEngine {
 public:
  explicit BoxEngine(BoxPicture picture) : picture_(picture) {}

  void paint(QPainter* painter, const QRect& area, QIcon::Mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(area.topLeft());
    painter->scale(area.width() / 16.0, area.height() / 16.0);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ground());
    if (picture_ == BoxPicture::warning) {
      painter->setPen(QPen(ground(), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter->drawPolygon(QPolygonF({{8, 2}, {14.8, 14}, {1.2, 14}}));
    } else {
      painter->drawEllipse(QRectF(0.75, 0.75, 14.5, 14.5));
    }
    draw_sign(*painter);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new BoxEngine(*this); }

 private:
  [[nodiscard]] QColor ground() const {
    switch (picture_) {
      case BoxPicture::warning:
        return {0xE8, 0xA3, 0x17};
      case BoxPicture::error:
        return {0xD3, 0x3F, 0x37};
      default:
        return {0x00, 0x79, 0xA2};
    }
  }

  void draw_sign(QPainter& painter) const {
    const QColor ink = picture_ == BoxPicture::warning ? QColor(0x20, 0x20, 0x20) : Qt::white;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (picture_) {
      case BoxPicture::information:
        painter.drawLine(QPointF(8, 7.4), QPointF(8, 11.8));
        painter.drawPoint(QPointF(8, 4.4));
        break;
      case BoxPicture::warning:
        painter.drawLine(QPointF(8, 5.8), QPointF(8, 9.6));
        painter.drawPoint(QPointF(8, 12.2));
        break;
      case BoxPicture::error:
        painter.drawLine(QPointF(5.2, 5.2), QPointF(10.8, 10.8));
        painter.drawLine(QPointF(10.8, 5.2), QPointF(5.2, 10.8));
        break;
      case BoxPicture::question: {
        QPainterPath hook(QPointF(5.6, 6.2));
        hook.cubicTo(5.6, 2.8, 10.6, 2.9, 10.5, 6.1);
        hook.cubicTo(10.4, 8, 8, 7.8, 8, 9.8);
        painter.drawPath(hook);
        painter.drawPoint(QPointF(8, 12.4));
        break;
      }
    }
  }

  BoxPicture picture_;
};

}  // namespace

QIcon program_icon() { return QIcon(new ProgramEngine); }

QIcon box_icon(BoxPicture picture) { return QIcon(new BoxEngine(picture)); }

}  // namespace corvelin
