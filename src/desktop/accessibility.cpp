// SPDX-License-Identifier: GPL-2.0-or-later
// The view and its three pictures as accessible objects, and who makes those of other kinds.
#include "desktop/accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QAction>
#include <QLineEdit>
#include <array>

#include "desktop/accessible_lines.h"
#include "desktop/accessible_marks.h"
#include "desktop/qt_text.h"
#include "desktop/view_widget.h"
#include "edit/editor.h"
#include "shell/status_display.h"
#include "text/text_rows.h"

namespace corvelin {

namespace {

using Picture = ViewWidget::Area;
constexpr int picture_count = 3;

QString name_of(Picture picture) {
  switch (picture) {
    case Picture::graph:
      return as_qstring(ui_text(row::graph));
    case Picture::map:
      return as_qstring(ui_text(row::overview));
    case Picture::meter:
      return as_qstring(ui_text(row::level_meter));
  }
  return {};
}

QString description_of(const Editor& editor, Picture picture) {
  return as_qstring(picture == Picture::meter ? meter_in_words(editor) : view_in_words(editor));
}

class AccessiblePicture : public QAccessibleInterface {
 public:
  AccessiblePicture(ViewWidget& view, Picture picture) : view_(view), picture_(picture) {}

  [[nodiscard]] bool isValid() const override { return true; }
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QWindow* window() const override { return view_.window()->windowHandle(); }
  [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(&view_);
  }
  [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  [[nodiscard]] QString text(QAccessible::Text text) const override {
    if (text == QAccessible::Name) return name_of(picture_);
    if (text == QAccessible::Description) return description_of(view_.editor(), picture_);
    return {};
  }
  void setText(QAccessible::Text, const QString&) override {}
  [[nodiscard]] QRect rect() const override {
    const Rect area = view_.picture_area(picture_);
    const double ratio = view_.devicePixelRatioF();
    const QRectF logical(area.left / ratio, area.top / ratio, area.width() / ratio,
                         area.height() / ratio);
    return logical.toAlignedRect().translated(view_.mapToGlobal(QPoint(0, 0)));
  }
  [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Graphic; }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    state.invisible = !view_.isVisible();
    state.readOnly = true;
    return state;
  }

 private:
  ViewWidget& view_;
  Picture picture_;
};

class AccessibleView : public QAccessibleWidget {
 public:
  explicit AccessibleView(ViewWidget& view)
      : QAccessibleWidget(&view, QAccessible::Grouping, QStringLiteral("Corvelin")) {
    for (int i = 0; i < picture_count; ++i)
      pictures_[static_cast<std::size_t>(i)] = QAccessible::registerAccessibleInterface(
          new AccessiblePicture(view, static_cast<Picture>(i)));
  }
  ~AccessibleView() override {
    for (const QAccessible::Id id : pictures_) QAccessible::deleteAccessibleInterface(id);
  }
  AccessibleView(const AccessibleView&) = delete;
  AccessibleView& operator=(const AccessibleView&) = delete;

  [[nodiscard]] int childCount() const override { return picture_count; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= picture_count) return nullptr;
    return QAccessible::accessibleInterface(pictures_[static_cast<std::size_t>(index)]);
  }
  int indexOfChild(const QAccessibleInterface* picture) const override {
    for (int i = 0; i < picture_count; ++i)
      if (child(i) == picture) return i;
    return -1;
  }
  // The meter lies over the graph.
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
    for (int i = picture_count - 1; i >= 0; --i)
      if (child(i)->rect().contains(x, y)) return child(i);
    return nullptr;
  }

 private:
  std::array<QAccessible::Id, picture_count> pictures_ = {};
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
  if (auto* const view = dynamic_cast<ViewWidget*>(object)) return new AccessibleView(*view);
  if (auto* const entry = qobject_cast<QAction*>(object)) return new_accessible_mark(*entry);
  auto* const line = qobject_cast<QLineEdit*>(object);
  return line != nullptr && line->isReadOnly() ? new_accessible_read_only_line(*line) : nullptr;
}

}  // namespace

void install_accessibility() { QAccessible::installFactory(make_interface); }

void announce_view(ViewWidget& view) {
  if (!QAccessible::isActive()) return;
  QAccessibleInterface* const all = QAccessible::queryAccessibleInterface(&view);
  if (all == nullptr) return;
  for (int i = 0; i < all->childCount(); ++i) {
    QAccessibleEvent event(all->child(i), QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
  }
}

}  // namespace corvelin
