// SPDX-License-Identifier: GPL-2.0-or-later
// Shapes of the controls.
#include "desktop/style.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "desktop/look.h"
#include "desktop/signs.h"

namespace corvelin {

namespace {

constexpr double rounding = 3;  // of corners, logical pixels
constexpr double focus_width = 2;

class Shapes {
 public:
  Shapes(QPainter* painter, const QPalette& palette) : painter_(painter), palette_(palette) {
    painter_->save();
    painter_->setRenderHint(QPainter::Antialiasing);
  }
  ~Shapes() { painter_->restore(); }
  Shapes(const Shapes&) = delete;
  Shapes& operator=(const Shapes&) = delete;

  void fill(const QRectF& area, const QColor& colour, double radius = rounding) {
    painter_->setPen(Qt::NoPen);
    painter_->setBrush(colour);
    painter_->drawRoundedRect(area, radius, radius);
  }
  void border(const QRectF& area, const QColor& colour, double width = 1,
              double radius = rounding) {
    const double inset = width / 2;
    painter_->setPen(QPen(colour, width));
    painter_->setBrush(Qt::NoBrush);
    painter_->drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius - inset,
                              radius - inset);
  }
  void triangle(const QPolygonF& corners, const QColor& colour) {
    painter_->setPen(Qt::NoPen);
    painter_->setBrush(colour);
    painter_->drawPolygon(corners);
  }
  void tick(const QRectF& box, const QColor& colour) {
    const auto at = [&box](double x, double y) {
      return QPointF(box.x() + x * box.width(), box.y() + y * box.height());
    };
    painter_->setPen(QPen(colour, box.width() / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_->setBrush(Qt::NoBrush);
    painter_->drawPolyline(QPolygonF({at(0.24, 0.53), at(0.43, 0.72), at(0.78, 0.31)}));
  }

  [[nodiscard]] QColor accent() const { return palette_.color(QPalette::Link); }
  [[nodiscard]] QColor colour(QPalette::ColorRole role) const { return palette_.color(role); }
  /// The text's colour as a veil over what lies below it.
  [[nodiscard]] QColor veil(double share) const {
    QColor colour = palette_.color(QPalette::WindowText);
    colour.setAlphaF(static_cast<float>(share));
    return colour;
  }
  [[nodiscard]] QColor accent_veil(double share) const {
    QColor colour = accent();
    colour.setAlphaF(static_cast<float>(share));
    return colour;
  }

 private:
  QPainter* painter_;
  const QPalette& palette_;
};

bool has(const QStyleOption* option, QStyle::State state) { return (option->state & state) != 0; }

bool is_enabled(const QStyleOption* option) { return has(option, QStyle::State_Enabled); }

void draw_focus_frame(const QStyleOption* option, QPainter* painter) {
  if (!has(option, QStyle::State_KeyboardFocusChange)) return;
  Shapes shapes(painter, option->palette);
  shapes.border(option->rect, shapes.accent(), focus_width);
}

void draw_push_button(const QStyleOption* option, QPainter* painter) {
  Shapes shapes(painter, option->palette);
  const QRectF area = option->rect;
  const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
  const bool is_default =
      button != nullptr && (button->features & QStyleOptionButton::DefaultButton) != 0;
  shapes.fill(area, shapes.colour(QPalette::Button));
  if (is_enabled(option)) {
    if (has(option, QStyle::State_Sunken | QStyle::State_On))
      shapes.fill(area, shapes.veil(0.2));
    else if (has(option, QStyle::State_MouseOver))
      shapes.fill(area, shapes.veil(0.08));
  }
  shapes.border(area,
                is_default && is_enabled(option) ? shapes.accent() : shapes.colour(QPalette::Mid));
  if (has(option, QStyle::State_HasFocus)) draw_focus_frame(option, painter);
}

// A button that is nothing but its picture until the mouse, the focus or its state lifts it.
void draw_tool_button(const QStyleOption* option, QPainter* painter) {
  Shapes shapes(painter, option->palette);
  QRectF area = option->rect;
  if (!has(option, QStyle::State_AutoRaise)) {
    area.adjust(1, 0, -1, 0);  // neighbours don't touch
    shapes.fill(area, shapes.colour(QPalette::Button));
    shapes.border(area, shapes.colour(QPalette::Mid));
  }
  if (has(option, QStyle::State_On)) {
    shapes.fill(area, shapes.accent_veil(0.26));
    shapes.border(area, shapes.accent_veil(0.75));
  }
  if (!is_enabled(option)) return;
  if (has(option, QStyle::State_Sunken)) {
    shapes.fill(area, shapes.veil(0.24));
  } else if (has(option, QStyle::State_MouseOver)) {
    shapes.fill(area, shapes.veil(0.12));
  }
}

void draw_field(const QStyleOption* option, QPainter* painter, bool has_ground) {
  const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  if (frame != nullptr && frame->lineWidth == 0) return;
  Shapes shapes(painter, option->palette);
  const QRectF area = option->rect;
  if (has_ground) shapes.fill(area, shapes.colour(QPalette::Base));
  const bool has_focus = has(option, QStyle::State_HasFocus) && is_enabled(option);
  shapes.border(area, has_focus ? shapes.accent() : shapes.colour(QPalette::Mid),
                has_focus ? 1.5 : 1);
}

// The ground of a check or radio mark.
void draw_mark_ground(const QStyleOption* option, Shapes& shapes, const QRectF& box,
                      double radius) {
  const bool is_set = has(option, QStyle::State_On | QStyle::State_NoChange);
  if (is_set && is_enabled(option)) {
    shapes.fill(box, shapes.colour(QPalette::Highlight), radius);
    if (has(option, QStyle::State_MouseOver)) shapes.border(box, shapes.accent(), 1, radius);
    return;
  }
  shapes.fill(box, is_enabled(option) ? shapes.colour(QPalette::Base) : shapes.veil(0.06), radius);
  const bool is_hot = has(option, QStyle::State_MouseOver) && is_enabled(option);
  shapes.border(box, is_hot ? shapes.accent() : shapes.colour(QPalette::Mid), 1, radius);
}

QRectF centred_square(const QRect& area) {
  const double side = std::min(area.width(), area.height());
  return {area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2, side, side};
}

QColor mark_colour(const QStyleOption* option, const Shapes& shapes) {
  return shapes.colour(is_enabled(option) ? QPalette::HighlightedText : QPalette::WindowText);
}

void draw_check_box(const QStyleOption* option, QPainter* painter) {
  Shapes shapes(painter, option->palette);
  const QRectF box = centred_square(option->rect);
  draw_mark_ground(option, shapes, box, rounding);
  if (has(option, QStyle::State_On)) shapes.tick(box, mark_colour(option, shapes));
}

void draw_radio_button(const QStyleOption* option, QPainter* painter) {
  Shapes shapes(painter, option->palette);
  const QRectF box = centred_square(option->rect);
  const double radius = box.width() / 2;
  draw_mark_ground(option, shapes, box, radius);
  const double dot = box.width() * 0.3;
  if (has(option, QStyle::State_On))
    shapes.fill(box.adjusted(dot, dot, -dot, -dot), mark_colour(option, shapes), radius);
}

void draw_menu_bar_item(const QStyleOptionMenuItem* item, QPainter* painter, const QStyle& style) {
  const QPalette& palette = item->palette;
  painter->fillRect(item->rect, palette.window());
  const bool is_hot = has(item, QStyle::State_Selected) && is_enabled(item);
  if (is_hot) painter->fillRect(item->rect, palette.highlight());
  const int flags = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine;
  style.drawItemText(painter, item->rect, flags, palette, is_enabled(item), item->text,
                     is_hot ? QPalette::HighlightedText : QPalette::WindowText);
}

void draw_progress(const QStyleOptionProgressBar* bar, QPainter* painter) {
  Shapes shapes(painter, bar->palette);
  const QRectF area = bar->rect;
  shapes.fill(area, shapes.colour(QPalette::Base));
  const double span = std::max(bar->maximum - bar->minimum, 1);
  const double share = std::clamp((bar->progress - bar->minimum) / span, 0.0, 1.0);
  if (share > 0) {
    painter->setClipRect(QRectF(area.x(), area.y(), area.width() * share, area.height()));
    shapes.fill(area, shapes.colour(QPalette::Highlight));
    painter->setClipping(false);
  }
  shapes.border(area, shapes.colour(QPalette::Mid));
}

void draw_scroll_arrow(const QStyleOptionSlider* bar, Shapes& shapes, const QRectF& area,
                       QStyle::SubControl part, bool points_back) {
  if (area.isEmpty()) return;
  const bool is_hot = bar->activeSubControls == part && has(bar, QStyle::State_MouseOver);
  const QPointF centre = area.center();
  const double size = (points_back ? -1 : 1) * 3.5;
  const bool is_flat = bar->orientation == Qt::Horizontal;
  const auto at = [&](double along, double across) {
    return centre + (is_flat ? QPointF(along, across) : QPointF(across, along));
  };
  shapes.triangle({at(size * 0.7, 0), at(-size * 0.5, size), at(-size * 0.5, -size)},
                  shapes.veil(is_hot ? 0.9 : 0.55));
}

void draw_scroll_bar(const QStyleOptionSlider* bar, QPainter* painter, const QWidget* widget,
                     const QStyle& style) {
  Shapes shapes(painter, bar->palette);
  const auto part = [&](QStyle::SubControl which) {
    return QRectF(style.subControlRect(QStyle::CC_ScrollBar, bar, which, widget));
  };
  painter->fillRect(bar->rect, shapes.veil(0.07));
  draw_scroll_arrow(bar, shapes, part(QStyle::SC_ScrollBarSubLine), QStyle::SC_ScrollBarSubLine,
                    bar->direction == Qt::LeftToRight || bar->orientation == Qt::Vertical);
  draw_scroll_arrow(bar, shapes, part(QStyle::SC_ScrollBarAddLine), QStyle::SC_ScrollBarAddLine,
                    bar->direction == Qt::RightToLeft && bar->orientation == Qt::Horizontal);
  if (!is_enabled(bar) || bar->minimum == bar->maximum) return;
  const bool is_thumb = (bar->activeSubControls & QStyle::SC_ScrollBarSlider) != 0;
  const double strength = is_thumb && has(bar, QStyle::State_Sunken)      ? 0.62
                          : is_thumb && has(bar, QStyle::State_MouseOver) ? 0.5
                                                                          : 0.36;
  const bool is_flat = bar->orientation == Qt::Horizontal;
  const QRectF thumb =
      part(QStyle::SC_ScrollBarSlider)
          .adjusted(is_flat ? 0 : 3, is_flat ? 3 : 0, is_flat ? 0 : -3, is_flat ? -3 : 0);
  shapes.fill(thumb, shapes.veil(strength), 5);
  if (has(bar, QStyle::State_HasFocus)) shapes.border(thumb, shapes.accent(), 1.5, 5);
}

void draw_slider(const QStyleOptionSlider* slider, QPainter* painter, const QWidget* widget,
                 const QStyle& style) {
  constexpr double thickness = 4;
  Shapes shapes(painter, slider->palette);
  const QRectF handle =
      style.subControlRect(QStyle::CC_Slider, slider, QStyle::SC_SliderHandle, widget);
  const bool is_flat = slider->orientation == Qt::Horizontal;
  QRectF groove = slider->rect;
  if (is_flat) {
    groove.setTop(handle.center().y() - thickness / 2);
    groove.setHeight(thickness);
  } else {
    groove.setLeft(handle.center().x() - thickness / 2);
    groove.setWidth(thickness);
  }
  // The side that holds the smaller values is filled; a slider that stands has them at its bottom.
  QRectF filled = groove;
  if (!is_flat) {
    slider->upsideDown ? filled.setTop(handle.center().y()) : filled.setBottom(handle.center().y());
  } else {
    slider->upsideDown ? filled.setLeft(handle.center().x()) : filled.setRight(handle.center().x());
  }
  shapes.fill(groove, shapes.veil(0.2), 2);
  shapes.fill(filled, is_enabled(slider) ? shapes.accent() : shapes.veil(0.3), 2);

  const bool is_held = has(slider, QStyle::State_Sunken);
  const bool is_hot = has(slider, QStyle::State_MouseOver) && is_enabled(slider);
  const double side = std::min(handle.width(), handle.height()) - (is_hot || is_held ? 0 : 2);
  QRectF knob(0, 0, side, side);
  knob.moveCenter(handle.center());
  shapes.fill(knob, slider->palette.color(QPalette::WindowText), side / 2);
  if (has(slider, QStyle::State_HasFocus)) shapes.border(knob, shapes.accent(), 2.5, side / 2);
}

}  // namespace

Style::Style() : QProxyStyle(QStringLiteral("fusion")) {}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option,
                       const QWidget* widget) const {
  switch (metric) {
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 0;
    case PM_ScrollBarExtent:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
      return 16;
    case PM_SliderLength:
      return 14;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return std::max(15, option == nullptr ? 0 : option->fontMetrics.ascent());
    case PM_MessageBoxIconSize:
      return 40;
    case PM_MenuBarItemSpacing:
    case PM_MenuBarVMargin:
    case PM_MenuBarHMargin:
    case PM_MenuBarPanelWidth:
      return 0;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const {
  QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
  const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  constexpr int gap = 20;  // in front of the keys
  if (type == CT_MenuItem && item != nullptr && item->reservedShortcutWidth > 0)
    result.rwidth() += item->reservedShortcutWidth + gap;
  return result;
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* data) const {
  switch (hint) {
    case SH_ToolTip_WakeUpDelay:
      return 500;  // milliseconds
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, data);
  }
}

QIcon Style::standardIcon(StandardPixmap picture, const QStyleOption* option,
                          const QWidget* widget) const {
  switch (picture) {
    case SP_MessageBoxInformation:
      return box_icon(BoxPicture::information);
    case SP_MessageBoxWarning:
      return box_icon(BoxPicture::warning);
    case SP_MessageBoxCritical:
      return box_icon(BoxPicture::error);
    case SP_MessageBoxQuestion:
      return box_icon(BoxPicture::question);
    default:
      return QProxyStyle::standardIcon(picture, option, widget);
  }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  switch (element) {
    case PE_PanelButtonTool:
      return draw_tool_button(option, painter);
    case PE_PanelButtonCommand:
      return draw_push_button(option, painter);
    case PE_PanelLineEdit:
      return draw_field(option, painter, true);
    case PE_FrameLineEdit:
      return draw_field(option, painter, false);
    case PE_IndicatorCheckBox:
      return draw_check_box(option, painter);
    case PE_IndicatorRadioButton:
      return draw_radio_button(option, painter);
    case PE_FrameFocusRect:
      return draw_focus_frame(option, painter);
    case PE_Frame:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
      if (has(option, State_HasFocus)) draw_focus_frame(option, painter);
      return;
    case PE_PanelStatusBar:
    case PE_PanelMenuBar:
      return;  // no lines
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
  if (element == CE_MenuBarItem) {
    if (const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
      return draw_menu_bar_item(item, painter, *this);
  } else if (element == CE_MenuBarEmptyArea) {
    return painter->fillRect(option->rect, option->palette.window());
  } else if (element == CE_ProgressBarGroove || element == CE_ProgressBarLabel) {
    return;
  } else if (element == CE_ProgressBarContents) {
    if (const auto* const bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option))
      return draw_progress(bar, painter);
  }
  // By itself a text goes in the direction of the whole program: the "<<" of a button whose place
  // is on the left in any language would turn round.
  const Qt::LayoutDirection direction = painter->layoutDirection();
  painter->setLayoutDirection(option->direction);
  QProxyStyle::drawControl(element, option, painter, widget);
  painter->setLayoutDirection(direction);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                               QPainter* painter, const QWidget* widget) const {
  if (const auto* const slider = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
    if (control == CC_ScrollBar) return draw_scroll_bar(slider, painter, widget, *this);
    if (control == CC_Slider) return draw_slider(slider, painter, widget, *this);
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace corvelin
