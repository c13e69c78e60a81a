// SPDX-License-Identifier: GPL-2.0-or-later
// A line as text without editing.
#include "desktop/accessible_lines.h"

#include <QAccessibleWidget>
#include <QLineEdit>

namespace corvelin {

namespace {

class AccessibleReadOnlyLine : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit AccessibleReadOnlyLine(QLineEdit& line)
      : QAccessibleWidget(&line, QAccessible::EditableText), line_(line) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  [[nodiscard]] QString text(QAccessible::Text text) const override {
    return text == QAccessible::Value ? line_.text() : QAccessibleWidget::text(text);
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.selectableText = true;
    return state;
  }

  [[nodiscard]] QString text(int from, int to) const override {
    return line_.text().mid(from, to - from);
  }
  [[nodiscard]] int characterCount() const override {
    return static_cast<int>(line_.text().size());
  }
  [[nodiscard]] QRect characterRect(int offset) const override {
    const QFontMetrics metrics = line_.fontMetrics();
    const int left = metrics.horizontalAdvance(line_.text().left(offset));
    const int right = metrics.horizontalAdvance(line_.text().left(offset + 1));
    return {line_.mapToGlobal(line_.contentsRect().topLeft() + QPoint(left, 0)),
            QSize(right - left, line_.contentsRect().height())};
  }
  [[nodiscard]] int offsetAtPoint(const QPoint& point) const override {
    return line_.cursorPositionAt(line_.mapFromGlobal(point));
  }
  QString attributes(int, int* from, int* to) const override {
    *from = 0;
    *to = characterCount();
    return {};
  }

  [[nodiscard]] int cursorPosition() const override { return line_.cursorPosition(); }
  void setCursorPosition(int offset) override { line_.setCursorPosition(offset); }
  void scrollToSubstring(int from, int to) override {
    line_.setCursorPosition(to);
    line_.setCursorPosition(from);
  }

  [[nodiscard]] int selectionCount() const override { return line_.hasSelectedText() ? 1 : 0; }
  void selection(int, int* from, int* to) const override {
    *from = line_.hasSelectedText() ? line_.selectionStart() : 0;
    *to = line_.hasSelectedText() ? line_.selectionEnd() : 0;
  }
  void addSelection(int from, int to) override { line_.setSelection(from, to - from); }
  void setSelection(int, int from, int to) override { line_.setSelection(from, to - from); }
  void removeSelection(int) override { line_.deselect(); }

 private:
  QLineEdit& line_;
};

}  // namespace

QAccessibleInterface* new_accessible_read_only_line(QLineEdit& line) {
  return new AccessibleReadOnlyLine(line);
}

}  // namespace corvelin
