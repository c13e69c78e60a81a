// SPDX-License-Identifier: GPL-2.0-or-later
// Menus out of the tree.
#include "desktop/menus.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QStyleOptionMenuItem>
#include <algorithm>
#include <utility>

#include "desktop/accessible_marks.h"
#include "desktop/qt_text.h"
#include "edit/editor.h"
#include "edit/menu_state.h"
#include "edit/undo.h"
#include "platform/processes/program.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// A menu whose entries are called by their plain text: their keys, which the texts name behind a
// tab, are only painted beside them. The keys themselves are the window's.
class CommandMenu : public QMenu {
 public:
  using QMenu::QMenu;

  static void set_text(QAction& action, const QString& text) {
    action.setText(text.section(u'\t', 0, 0));
    action.setProperty(key_property, text.section(u'\t', 1));
  }

 protected:
  void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override {
    QMenu::initStyleOption(option, action);
    const QString key = key_of(*action);
    if (!key.isEmpty()) option->text += u'\t' + key;
    for (const QAction* const other : actions())
      option->reservedShortcutWidth = std::max(
          option->reservedShortcutWidth, option->fontMetrics.horizontalAdvance(key_of(*other)));
  }

 private:
  static constexpr const char* key_property = "key";
  static QString key_of(const QAction& action) { return action.property(key_property).toString(); }
};

}  // namespace

Menus::Menus(const Editor& editor, QMenuBar& bar, const Look& look, RunCommand run)
    : editor_(editor), bar_(bar), palette_(menu_palette(look)), run_(std::move(run)) {
  bar.setPalette(palette_);
  bar.setAccessibleName(as_qstring(program_name));
  for (const Menu* const menu : menu_bar()) {
    QMenu* const made = add_menu(&bar, *menu);
    bar.addMenu(made);
    if (menu == &file_menu) file_menu_ = made;
    if (menu == &list_menu) list_menu_ = made;
  }
  rebuild_part_list();
  rebuild_recent_menu();
  show_states(all_states);
  show_marks();
}

QMenu* Menus::add_menu(QWidget* parent, const Menu& menu) {
  auto* const made = new CommandMenu(as_qstring(ui_text(men, menu.title)), parent);
  made->setAccessibleName(made->title().remove(u'&'));
  made->setObjectName(QStringLiteral("menu_%1").arg(menu.title));
  made->setPalette(palette_);
  QActionGroup* radio_marks = nullptr;
  for (const MenuRow& row : menu.rows) {
    if (row.menu != nullptr) {
      submenus_.push_back(add_menu(made, *row.menu));
      made->addMenu(submenus_.back());
    } else if (row.command == 0) {
      made->addSeparator();
    } else if (has_entry(row)) {
      const Command& command = *command_of(editor_, row.command);
      QAction* const action = add_entry(*made, command.id);
      CommandMenu::set_text(*action, as_qstring(text_of(command)));
      actions_[command.id] = action;
      if (command.mark.bits == 0) continue;
      action->setCheckable(true);
      QObject::connect(action, &QAction::toggled, made, [action] { announce_mark(*action); });
      if (!command.mark.is_radio) continue;
      if (radio_marks == nullptr) radio_marks = new QActionGroup(made);
      radio_marks->addAction(action);
    }
  }
  return made;
}

QAction* Menus::add_entry(QMenu& menu, CommandId id) {
  QAction* const action = menu.addAction(QString());
  action->setObjectName(QStringLiteral("command_%1").arg(id));
  // Later, as a screen reader that chose the entry waits for the answer, and must not wait for the
  // end of a dialog.
  const auto run = [this, id] {
    run_(id);
    show_marks();  // the toolkit has moved the mark, whatever became of the command
  };
  QObject::connect(action, &QAction::triggered, &menu, run, Qt::QueuedConnection);
  return action;
}

void Menus::rebuild_part_list() {
  list_menu_->clear();
  CommandId id = first_part_command;
  for (const std::string& text : part_list(editor_.document)) {
    // A name may hold the sign that underlines a letter. Behind the tab is a title here, no key.
    add_entry(*list_menu_, id++)->setText(as_qstring(text).replace(u'&', QStringLiteral("&&")));
  }
  list_menu_->setEnabled(!list_menu_->isEmpty());
}

void Menus::rebuild_recent_menu() {
  for (QAction* const action : recent_) delete action;
  recent_.clear();
  const std::vector<MenuEntry> entries = recent_entries();
  if (entries.empty()) return;
  recent_.push_back(file_menu_->addSeparator());
  for (const MenuEntry& entry : entries) {
    QString name = as_qstring(entry.text).mid(1);  // behind the number's own sign
    recent_.push_back(add_entry(*file_menu_, entry.id));
    recent_.back()->setText(u'&' + name.replace(u'&', QStringLiteral("&&")));
  }
}

void Menus::show_states(std::uint8_t mask) {
  for (const auto& [id, action] : actions_)
    if ((state_bit(*command_of(editor_, id)) & mask) != 0)
      action->setEnabled(is_command_enabled(editor_, id));
  for (QMenu* const menu : submenus_)
    menu->menuAction()->setEnabled(std::ranges::any_of(menu->actions(), &QAction::isEnabled));
  const auto undo = actions_.find(command::undo);
  if (undo != actions_.end())
    CommandMenu::set_text(*undo->second, as_qstring(undo_menu_text(editor_)));
}

void Menus::take_look(const Look& look) {
  const QPalette palette = menu_palette(look);
  if (palette == palette_) return;
  palette_ = palette;
  bar_.setPalette(palette);
  for (QMenu* const menu : bar_.findChildren<QMenu*>()) menu->setPalette(palette);
}

void Menus::show_marks() {
  for (const auto& [id, action] : actions_)
    if (action->isCheckable()) action->setChecked(is_checked(*command_of(editor_, id)));
}

}  // namespace corvelin
