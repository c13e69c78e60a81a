// SPDX-License-Identifier: GPL-2.0-or-later
// The view on the screen: an image in device pixels that the core draws, and the mouse over it.
#pragma once

#include <QImage>
#include <QWidget>

#include "shell/editor_view.h"
#include "shell/graph_mouse.h"

namespace corvelin {

struct Editor;

class ViewWidget : public QWidget {
 public:
  ViewWidget(Editor& editor, QWidget* parent);

  /// Its place in device pixels of its parent, and how many of them a logical pixel has.
  void place(const Rect& area, float display_scale, double ratio);

  /// What is shown is out of date. However often this is said, it is drawn once, when the screen
  /// is.
  void refresh();

  /// Where the pictures of the last drawing are, in device pixels of the widget.
  enum class Area { graph, map, meter };
  [[nodiscard]] Rect picture_area(Area area) const;

  /// What it shows.
  [[nodiscard]] const Editor& editor() const { return editor_; }

  /// The last drawing.
  [[nodiscard]] const EditorView& view() const { return view_; }
  [[nodiscard]] const QImage& image() const { return image_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void draw();
  void show_pointer();
  [[nodiscard]] QPoint device_point(const QMouseEvent& event) const;

  Editor& editor_;
  EditorView view_;
  GraphMouse mouse_;
  QImage image_;
  QSize size_;  // in device pixels
  float display_scale_ = 1;
  double ratio_ = 1;
  bool is_stale_ = true;
};

}  // namespace corvelin
