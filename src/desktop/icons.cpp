// SPDX-License-Identifier: GPL-2.0-or-later
// Shapes on a grid of 20 by 16 units.
#include "desktop/icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iterator>

namespace corvelin {

namespace {

constexpr double grid_width = 20;
constexpr double grid_height = 16;

constexpr double solid = 1;
constexpr double faint = 0.4;  // what stands behind, or isn't moved

struct Point {
  double x;
  double y;
};

// Draws in grid units. Corners fall on whole pixels, so that upright and level edges are sharp.
class IconPen {
 public:
  IconPen(QPainter& painter, const QSize& size, const IconColours& colours)
      : painter_(painter),
        colours_(colours),
        unit_(std::min(size.width() / grid_width, size.height() / grid_height)),
        left_(std::floor((size.width() - grid_width * unit_) / 2)),
        top_(std::floor((size.height() - grid_height * unit_) / 2)) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
  }

  void box(double x, double y, double width, double height, double strength = solid) {
    painter_.fillRect(snapped(x, y, width, height), ink(strength));
  }

  /// A part of the selection.
  void band(double x, double width) {
    QColor colour = colours_.accent;
    colour.setAlphaF(0.6F);
    painter_.fillRect(snapped(x, 4, width, 8), colour);
  }

  /// Takes away what was drawn.
  void hole(double x, double y, double width, double height) {
    painter_.setCompositionMode(QPainter::CompositionMode_Clear);
    painter_.fillRect(snapped(x, y, width, height), Qt::black);
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
  }

  void shape(std::initializer_list<Point> corners, double strength = solid) {
    QPolygonF polygon;
    for (const Point& corner : corners) polygon << snapped(corner);
    painter_.setBrush(ink(strength));
    painter_.drawPolygon(polygon);
  }

  void line(Point from, Point to, double width) {
    painter_.setPen(QPen(ink(solid), width * unit_, Qt::SolidLine, Qt::FlatCap));
    painter_.drawLine(exact(from), exact(to));
    painter_.setPen(Qt::NoPen);
  }

  void disc(Point centre, double radius, const QColor& colour) {
    painter_.setBrush(colour);
    painter_.drawEllipse(exact(centre), radius * unit_, radius * unit_);
  }

  /// Angles in degrees, counted from the right against the clock.
  void arc(Point centre, double radius, double width, int from, int span) {
    const QRectF area(exact({centre.x - radius, centre.y - radius}),
                      QSizeF(2 * radius * unit_, 2 * radius * unit_));
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(ink(solid), width * unit_, Qt::SolidLine, Qt::FlatCap));
    painter_.drawArc(area, from * 16, span * 16);
    painter_.setPen(Qt::NoPen);
  }

  void ring(Point centre, double radius, double width) { arc(centre, radius, width, 0, 360); }

 private:
  [[nodiscard]] QPointF exact(Point point) const {
    return {left_ + point.x * unit_, top_ + point.y * unit_};
  }
  [[nodiscard]] QPointF snapped(Point point) const {
    return {left_ + std::round(point.x * unit_), top_ + std::round(point.y * unit_)};
  }
  // At least a pixel wide and high.
  [[nodiscard]] QRectF snapped(double x, double y, double width, double height) const {
    const QPointF begin = snapped({x, y});
    const QPointF end = snapped({x + width, y + height});
    return {begin, QPointF(std::max(end.x(), begin.x() + 1), std::max(end.y(), begin.y() + 1))};
  }
  [[nodiscard]] QColor ink(double strength) const {
    QColor colour = colours_.ink;
    colour.setAlphaF(static_cast<float>(colour.alphaF() * strength));
    return colour;
  }

  QPainter& painter_;
  const IconColours& colours_;
  double unit_;
  double left_;
  double top_;
};

// The signs that the pictures are made of.

void arrow_left(IconPen& pen, double tip, double width = 6, double strength = solid) {
  pen.shape({{tip, 8}, {tip + width, 8 - width * 0.85}, {tip + width, 8 + width * 0.85}}, strength);
}

void arrow_right(IconPen& pen, double tip, double width = 6, double strength = solid) {
  pen.shape({{tip, 8}, {tip - width, 8 - width * 0.85}, {tip - width, 8 + width * 0.85}}, strength);
}

// Where a selection begins and ends: "[" and "]", from the top at `y` on.
void begin_mark(IconPen& pen, double x, double y = 2) {
  pen.box(x, y, 2, 14 - y);
  pen.box(x, y, 4, 2);
  pen.box(x, 12, 4, 2);
}

void end_mark(IconPen& pen, double x, double y = 2) {
  pen.box(x + 2, y, 2, 14 - y);
  pen.box(x, y, 4, 2);
  pen.box(x, 12, 4, 2);
}

// The dotted line of a cue.
void cue_mark(IconPen& pen, double x) {
  for (int dot = 0; dot < 4; ++dot) pen.box(x, 1 + dot * 4, 2, 2);
}

// The cursor that goes to what stands below it.
void cursor_mark(IconPen& pen, double x) { pen.shape({{x - 3, 0}, {x + 3, 0}, {x, 4}}); }

void page(IconPen& pen, double x, double y, double width, double height, double strength = solid) {
  const double right = x + width;
  const double bottom = y + height;
  pen.shape({{x, y}, {right - 3, y}, {right, y + 3}, {right, bottom}, {x, bottom}}, strength);
}

void magnifier(IconPen& pen) {
  pen.ring({8, 7}, 5, 2);
  pen.line({11.3, 10.3}, {16, 15}, 2.6);
  pen.box(6, 6, 4, 2);
}

void tag(IconPen& pen) {
  pen.shape({{1, 3}, {13, 3}, {18, 8}, {13, 13}, {1, 13}});
  pen.hole(13, 7, 2, 2);
}

void two_arrows_right(IconPen& pen) {
  arrow_right(pen, 7, 6);
  arrow_right(pen, 13, 6);
}

// The pictures.

void open(IconPen& pen) {
  pen.shape({{1, 2}, {7, 2}, {9, 4}, {16, 4}, {16, 6}, {4, 6}, {2, 13}, {1, 13}}, 0.7);
  pen.shape({{5, 7}, {19, 7}, {16, 14}, {2, 14}});
}

void save_complete(IconPen& pen) {
  pen.shape({{3, 1}, {14, 1}, {17, 4}, {17, 15}, {3, 15}});
  pen.hole(6, 1, 7, 5);
  pen.box(10, 2, 2, 3);
  pen.hole(5, 8, 10, 6);
  pen.box(7, 9, 6, 1);
  pen.box(7, 11, 6, 1);
}

void save_project(IconPen& pen) {
  page(pen, 4, 1, 12, 14);
  for (int row = 0; row < 3; ++row) {
    pen.hole(6, 6 + row * 3, 1, 1);
    pen.hole(8, 6 + row * 3, 6, 1);
  }
}

void cut_clipboard(IconPen& pen) {
  pen.line({13.5, 1}, {7, 11}, 1.8);
  pen.line({6.5, 1}, {13, 11}, 1.8);
  pen.ring({5.8, 12.4}, 2, 1.6);
  pen.ring({14.2, 12.4}, 2, 1.6);
}

void copy(IconPen& pen) {
  page(pen, 3, 1, 9, 11, 0.55);
  pen.hole(7, 3, 11, 13);
  page(pen, 8, 4, 9, 11);
}

void paste(IconPen& pen) {
  pen.box(3, 2, 11, 12, 0.55);
  pen.hole(5, 1, 7, 3);
  pen.box(6, 1, 5, 2);
  pen.hole(8, 5, 10, 11);
  page(pen, 9, 6, 8, 9);
}

void undo(IconPen& pen) {
  pen.shape({{2, 6}, {8, 1}, {8, 11}});
  pen.box(7, 5, 6, 2);
  pen.arc({12.5, 9.5}, 3.5, 2, -90, 180);
  pen.box(6, 12, 7, 2);
}

void configure(IconPen& pen) {
  constexpr double knobs[] = {12, 4, 8};
  for (int row = 0; row < 3; ++row) {
    const double y = 2 + row * 5;
    pen.box(2, y + 0.5, 16, 1, 0.7);
    pen.hole(knobs[row] - 1, y - 1, 5, 4);
    pen.box(knobs[row], y - 1, 3, 4);
  }
}

void file_info(IconPen& pen) {
  pen.ring({10, 8}, 6.25, 1.5);
  pen.box(9, 4, 2, 2);
  pen.box(9, 7, 2, 5);
}

void save_id3v1(IconPen& pen) {
  tag(pen);
  pen.hole(7, 5, 2, 6);
  pen.hole(6, 6, 1, 1);
}

void keep_id3v2(IconPen& pen) {
  tag(pen);
  pen.hole(5, 5, 5, 1);
  pen.hole(9, 6, 1, 1);
  pen.hole(8, 7, 1, 1);
  pen.hole(7, 8, 1, 1);
  pen.hole(6, 9, 1, 1);
  pen.hole(5, 10, 5, 1);
}

void names(IconPen& pen) {
  pen.box(2, 2, 10, 2, 0.7);
  pen.box(2, 6, 7, 2, 0.7);
  pen.box(2, 10, 4, 2, 0.7);
  pen.shape({{8, 14}, {9, 10}, {16, 3}, {19, 6}, {12, 13}});
}

void select_all(IconPen& pen) {
  pen.band(4, 12);
  begin_mark(pen, 1);
  end_mark(pen, 15);
}

void select_part(IconPen& pen) {
  pen.box(1, 4, 4, 8, faint);
  pen.box(15, 4, 4, 8, faint);
  pen.band(8, 4);
  begin_mark(pen, 6);
  end_mark(pen, 10);
}

void remove_selection(IconPen& pen) {
  begin_mark(pen, 1);
  end_mark(pen, 15);
  pen.line({6.5, 4.5}, {13.5, 11.5}, 2);
  pen.line({13.5, 4.5}, {6.5, 11.5}, 2);
}

void begin_left(IconPen& pen) {
  arrow_left(pen, 3);
  begin_mark(pen, 12);
}

void begin_right(IconPen& pen) {
  begin_mark(pen, 4);
  arrow_right(pen, 16);
}

void end_left(IconPen& pen) {
  arrow_left(pen, 4);
  end_mark(pen, 12);
}

void end_right(IconPen& pen) {
  end_mark(pen, 4);
  arrow_right(pen, 17);
}

void selection_left(IconPen& pen) {
  arrow_left(pen, 1, 5);
  pen.band(10, 7);
  begin_mark(pen, 8);
  end_mark(pen, 15);
}

void selection_right(IconPen& pen) {
  pen.band(3, 7);
  begin_mark(pen, 1);
  end_mark(pen, 8);
  arrow_right(pen, 19, 5);
}

// The side of a cut that moves is solid.
void left_side_left(IconPen& pen) {
  pen.box(1, 2, 6, 12);
  arrow_left(pen, 9, 5);
  pen.box(16, 2, 3, 12, faint);
}

void left_side_right(IconPen& pen) {
  pen.box(1, 2, 6, 12);
  arrow_right(pen, 14, 5);
  pen.box(16, 2, 3, 12, faint);
}

void right_side_left(IconPen& pen) {
  pen.box(1, 2, 3, 12, faint);
  arrow_left(pen, 6, 5);
  pen.box(13, 2, 6, 12);
}

void right_side_right(IconPen& pen) {
  pen.box(1, 2, 3, 12, faint);
  arrow_right(pen, 11, 5);
  pen.box(13, 2, 6, 12);
}

void cue_left(IconPen& pen) {
  arrow_left(pen, 3);
  cue_mark(pen, 13);
}

void cue_right(IconPen& pen) {
  cue_mark(pen, 5);
  arrow_right(pen, 17);
}

void skip_back_large(IconPen& pen) {
  arrow_left(pen, 3, 7);
  arrow_left(pen, 10, 7);
}

void skip_back_small(IconPen& pen) { arrow_left(pen, 6, 7); }
void skip_forward_small(IconPen& pen) { arrow_right(pen, 14, 7); }

void skip_forward_large(IconPen& pen) {
  arrow_right(pen, 10, 7);
  arrow_right(pen, 17, 7);
}

void previous_range(IconPen& pen) {
  cue_mark(pen, 4);
  arrow_left(pen, 8, 7);
}

void next_range(IconPen& pen) {
  arrow_right(pen, 12, 7);
  cue_mark(pen, 14);
}

void to_selection_begin(IconPen& pen) {
  cursor_mark(pen, 6);
  pen.band(7, 10);
  begin_mark(pen, 5, 5);
}

void to_selection_end(IconPen& pen) {
  cursor_mark(pen, 14);
  pen.band(3, 10);
  end_mark(pen, 11, 5);
}

void rewind(IconPen& pen) {
  pen.box(4, 2, 2, 12);
  arrow_left(pen, 7, 7);
}

void to_track_end(IconPen& pen) {
  arrow_right(pen, 13, 7);
  pen.box(14, 2, 2, 12);
}

void zoom_in(IconPen& pen) {
  magnifier(pen);
  pen.box(7, 5, 2, 4);
}

void margin_reset(IconPen& pen) {
  pen.box(3, 7, 3, 8);
  pen.box(8, 9, 3, 6);
  pen.box(3, 1, 3, 2, 0.7);
  pen.box(8, 1, 3, 2, 0.7);
  pen.box(15, 1, 2, 8);
  pen.shape({{12, 9}, {20, 9}, {16, 14}});
}

void cut_or_cue(IconPen& pen) {
  pen.box(1, 2, 2, 12);
  arrow_right(pen, 9, 5);
  arrow_left(pen, 11, 5);
  pen.box(17, 2, 2, 12);
}

void edit_restore(IconPen& pen) {
  pen.box(1, 2, 2, 12, faint);
  arrow_left(pen, 4, 5);
  pen.box(9, 2, 2, 12);
  arrow_right(pen, 16, 5);
  pen.box(17, 2, 2, 12, faint);
}

void set_begin(IconPen& pen) {
  pen.band(7, 10);
  begin_mark(pen, 4);
}

void set_end(IconPen& pen) {
  pen.band(3, 10);
  end_mark(pen, 12);
}

void loop_play(IconPen& pen) {
  pen.arc({10, 8}, 5, 2, 35, 150);
  pen.arc({10, 8}, 5, 2, 215, 150);
  pen.shape({{2, 8}, {8, 8}, {5, 12}});
  pen.shape({{12, 8}, {18, 8}, {15, 4}});
}

void prelisten_as_cut(IconPen& pen) {
  arrow_right(pen, 7, 6);
  pen.box(9, 2, 2, 12);
  arrow_right(pen, 19, 6);
}

void prelisten_to_begin(IconPen& pen) {
  arrow_right(pen, 8, 7);
  pen.band(12, 6);
  begin_mark(pen, 10);
}

void prelisten_from_begin(IconPen& pen) {
  pen.band(4, 14);
  begin_mark(pen, 2);
  arrow_right(pen, 16, 7);
}

void prelisten_to_end(IconPen& pen) {
  pen.band(2, 13);
  arrow_right(pen, 11, 7);
  end_mark(pen, 14);
}

void prelisten_from_end(IconPen& pen) {
  pen.band(2, 6);
  end_mark(pen, 6);
  arrow_right(pen, 19, 7);
}

void slower(IconPen& pen) {
  two_arrows_right(pen);
  pen.box(14, 7, 5, 2);
}

void faster(IconPen& pen) {
  slower(pen);
  pen.box(15.5, 5.5, 2, 5);
}

void play(IconPen& pen) { pen.shape({{5, 1}, {17, 8}, {5, 15}}); }
void stop(IconPen& pen) { pen.box(4, 2, 12, 12); }
void record(IconPen& pen) { pen.disc({10, 8}, 6, QColor(0xE0, 0x43, 0x3A)); }

struct Picture {
  CommandId id;
  void (*draw)(IconPen& pen);
};

constexpr Picture pictures[] = {
    {slower_icon, slower},
    {faster_icon, faster},
    {command::skip_back_large, skip_back_large},
    {command::skip_back_small, skip_back_small},
    {command::skip_forward_small, skip_forward_small},
    {command::skip_forward_large, skip_forward_large},
    {command::go_to_previous_range, previous_range},
    {command::go_to_next_range, next_range},
    {command::go_to_selection_begin, to_selection_begin},
    {command::go_to_selection_end, to_selection_end},
    {command::zoom_in, zoom_in},
    {command::zoom_out, magnifier},
    {command::go_to_track_end, to_track_end},
    {command::prelisten_to_begin, prelisten_to_begin},
    {command::prelisten_from_begin, prelisten_from_begin},
    {command::prelisten_to_end, prelisten_to_end},
    {command::prelisten_from_end, prelisten_from_end},
    {command::prelisten_as_cut, prelisten_as_cut},
    {command::rewind, rewind},
    {command::play, play},
    {command::stop, stop},
    {command::initialize_recording, record},
    {command::cut_or_cue, cut_or_cue},
    {command::edit_restore, edit_restore},
    {command::set_begin, set_begin},
    {command::set_end, set_end},
    {command::margin_reset, margin_reset},
    {command::trim_left_out, left_side_left},
    {command::trim_left_in, left_side_right},
    {command::trim_right_in, right_side_left},
    {command::trim_right_out, right_side_right},
    {command::move_cue_left, cue_left},
    {command::move_cue_right, cue_right},
    {command::toggle_keep_id3v2, keep_id3v2},
    {command::toggle_save_id3v1, save_id3v1},
    {command::open_by_dialog, open},
    {command::save_complete, save_complete},
    {command::save_project_or_sheet, save_project},
    {command::undo, undo},
    {command::remove_selection, remove_selection},
    {command::select_all, select_all},
    {command::file_info_dialog, file_info},
    {command::names_dialog, names},
    {command::cut_clipboard, cut_clipboard},
    {command::copy, copy},
    {command::paste, paste},
    {command::select_current_part, select_part},
    {command::move_begin_left, begin_left},
    {command::move_begin_right, begin_right},
    {command::move_end_left, end_left},
    {command::move_end_right, end_right},
    {command::move_selection_left, selection_left},
    {command::move_selection_right, selection_right},
    {command::loop_play, loop_play},
    {command::configuration_dialog, configure},
};

class PictureEngine : public QIconEngine {
 public:
  PictureEngine(const Picture& picture, const IconColours& colours)
      : picture_(picture), colours_(colours) {}

  void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device()->devicePixelRatioF();
    painter->drawPixmap(area, scaledPixmap(area.size() * ratio, mode, state, ratio));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }

  // `size` is in device pixels.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/,
                       qreal /*scale*/) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    IconPen pen(painter, size, colours_);
    picture_.draw(pen);
    if (mode == QIcon::Disabled) {
      painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
      painter.fillRect(pixmap.rect(), QColor(0, 0, 0, disabled_alpha));
    }
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new PictureEngine(*this); }

 private:
  static constexpr int disabled_alpha = 84;

  const Picture& picture_;
  IconColours colours_;
};

}  // namespace

QIcon command_icon(CommandId id, const IconColours& colours) {
  const auto* const picture = std::ranges::find(pictures, id, &Picture::id);
  if (picture == std::end(pictures)) return {};
  return QIcon(new PictureEngine(*picture, colours));
}

}  // namespace corvelin
