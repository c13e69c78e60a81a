// SPDX-License-Identifier: GPL-2.0-or-later
// Check and radio marks as boxes and buttons of a menu.
#include "desktop/accessible_marks.h"

#include <QAction>
#include <QMenu>

namespace corvelin {

namespace {

class AccessibleMark : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  AccessibleMark(QAction& entry, QMenu& menu) : entry_(entry), menu_(menu) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
  }
  [[nodiscard]] bool isValid() const override { return true; }
  [[nodiscard]] QObject* object() const override { return &entry_; }
  [[nodiscard]] QWindow* window() const override { return menu_.windowHandle(); }
  [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(&menu_);
  }
  [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  [[nodiscard]] QString text(QAccessible::Text text) const override {
    return text == QAccessible::Name ? entry_.text().remove(u'&') : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  [[nodiscard]] QRect rect() const override {
    const QRect area = menu_.actionGeometry(&entry_);
    return {menu_.mapToGlobal(area.topLeft()), area.size()};
  }
  [[nodiscard]] QAccessible::Role role() const override {
    return entry_.actionGroup() == nullptr ? QAccessible::CheckBox : QAccessible::RadioButton;
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    state.checkable = true;
    state.checked = entry_.isChecked();
    state.disabled = !entry_.isEnabled();
    state.invisible = !menu_.isVisible();
    state.focusable = true;
    state.focused = menu_.isVisible() && menu_.activeAction() == &entry_;
    return state;
  }

  [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override {
    if (name == pressAction()) entry_.trigger();
  }
  [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QAction& entry_;
  QMenu& menu_;
};

}  // namespace

QAccessibleInterface* new_accessible_mark(QAction& entry) {
  auto* const menu = qobject_cast<QMenu*>(entry.parent());
  return entry.isCheckable() && menu != nullptr ? new AccessibleMark(entry, *menu) : nullptr;
}

void announce_mark(QAction& entry) {
  if (!QAccessible::isActive()) return;
  QAccessible::State change;
  change.checked = true;
  QAccessibleStateChangeEvent event(&entry, change);
  QAccessible::updateAccessibility(&event);
}

}  // namespace corvelin
