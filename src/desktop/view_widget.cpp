// SPDX-License-Identifier: GPL-2.0-or-later
// Painting and mouse of the view.
#include "desktop/view_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "desktop/qt_canvas.h"
#include "platform/host.h"

namespace corvelin {

namespace {

MouseButtons buttons_of(const QMouseEvent& event, Qt::MouseButtons buttons) {
  return {.left = buttons.testFlag(Qt::LeftButton),
          .right = buttons.testFlag(Qt::RightButton),
          .shift = event.modifiers().testFlag(Qt::ShiftModifier),
          .ctrl = event.modifiers().testFlag(Qt::ControlModifier)};
}

bool is_our_button(const QMouseEvent& event) {
  return event.button() == Qt::LeftButton || event.button() == Qt::RightButton;
}

}  // namespace

ViewWidget::ViewWidget(Editor& editor, QWidget* parent) : QWidget(parent), editor_(editor) {
  setObjectName(QStringLiteral("view"));
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
}

void ViewWidget::place(const Rect& area, float display_scale, double ratio) {
  const int left = static_cast<int>(std::floor(area.left / ratio));
  const int top = static_cast<int>(std::floor(area.top / ratio));
  setGeometry(left, top, static_cast<int>(std::ceil(area.right / ratio)) - left,
              static_cast<int>(std::ceil(area.bottom / ratio)) - top);
  size_ = {area.width(), area.height()};
  display_scale_ = display_scale;
  ratio_ = ratio;
  refresh();
}

void ViewWidget::refresh() {
  is_stale_ = true;
  update();
}

Rect ViewWidget::picture_area(Area area) const {
  const ViewLayout& layout = view_.layout;
  switch (area) {
    case Area::graph:
      return {0, 0, layout.width, layout.graph_h};
    case Area::map:
      return {0, layout.graph_h, layout.width, layout.height};
    case Area::meter:
      return {layout.meter_left, layout.meter_top,
              layout.meter_left + layout.meter_pitch + layout.meter_bar_w,
              layout.meter_top + layout.meter_height};
  }
  return {};
}

void ViewWidget::draw() {
  is_stale_ = false;
  if (image_.size() != size_) image_ = QImage(size_, QImage::Format_RGB32);
  lay_out_view(view_, size_.width(), size_.height(), display_scale_);
  if (image_.isNull()) return;
  image_.setDevicePixelRatio(1);
  QtCanvas canvas(image_);
  view_redraw(editor_, view_, canvas);
}

void ViewWidget::paintEvent(QPaintEvent*) {
  if (is_stale_) draw();
  if (image_.isNull()) return;
  image_.setDevicePixelRatio(ratio_);
  // At a ratio with a fraction the widget may begin in the middle of a pixel; the image begins with
  // a whole one, or its lines would blur.
  QPainter painter(this);
  const QTransform onto_screen = painter.deviceTransform();
  painter.translate((std::round(onto_screen.dx()) - onto_screen.dx()) / ratio_,
                    (std::round(onto_screen.dy()) - onto_screen.dy()) / ratio_);
  painter.drawImage(QPointF(0, 0), image_);
  // Whether the window has a last column that only a part of a logical pixel covers can't be known.
  // The image leaves it out; where it is there it looks like the one beside it.
  if (width() * ratio_ > size_.width())
    painter.drawImage(QRectF(size_.width() / ratio_, 0, 1, size_.height() / ratio_), image_,
                      QRectF(size_.width() - 1, 0, 1, size_.height()));
}

QPoint ViewWidget::device_point(const QMouseEvent& event) const {
  const QPointF place = event.position() * ratio_;
  return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
}

void ViewWidget::show_pointer() {
  const Qt::CursorShape shape = mouse_.on_handle ? Qt::PointingHandCursor : Qt::ArrowCursor;
  if (cursor().shape() != shape) setCursor(shape);
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
  if (is_busy() || !is_our_button(*event)) return;
  setFocus(Qt::MouseFocusReason);
  // A dialog that came up in the middle of a drag has taken the release.
  if (event->buttons() == event->button()) release_mouse(editor_, mouse_);
  const QPoint at = device_point(*event);
  const MouseButtons buttons = buttons_of(*event, event->button());
  if (press_mouse(editor_, mouse_, view_, buttons, at.x(), at.y()))
    host().refresh_view(Refresh::places);
  show_pointer();
}

// The second press of two quick ones is a press like any other.
void ViewWidget::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void ViewWidget::mouseMoveEvent(QMouseEvent* event) {
  if (is_busy()) return;
  const QPoint at = device_point(*event);
  const MouseButtons buttons = buttons_of(*event, event->buttons());
  if (move_mouse(editor_, mouse_, view_, buttons, at.x(), at.y()))
    host().refresh_view(Refresh::places);
  show_pointer();
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (is_busy() || !is_our_button(*event)) return;
  if (release_mouse(editor_, mouse_)) host().refresh_view(Refresh::places);
}

}  // namespace corvelin
