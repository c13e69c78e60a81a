// SPDX-License-Identifier: GPL-2.0-or-later
// The menu bar: the core's menu tree as Qt's menus, their marks and grey entries.
#pragma once

#include <QPalette>
#include <map>
#include <vector>

#include "desktop/controls.h"
#include "desktop/look.h"
#include "shell/menu_tree.h"

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

namespace corvelin {

struct Editor;

class Menus {
 public:
  Menus(const Editor& editor, QMenuBar& bar, const Look& look, RunCommand run);

  void rebuild_part_list();
  void rebuild_recent_menu();
  void show_marks();  // check and radio marks
  void take_look(const Look& look);

  /// Grey or live, the entries of the mask, and what Undo would take back.
  void show_states(std::uint8_t mask);

 private:
  QMenu* add_menu(QWidget* parent, const Menu& menu);
  QAction* add_entry(QMenu& menu, CommandId id);

  const Editor& editor_;
  QMenuBar& bar_;
  QPalette palette_;
  RunCommand run_;
  std::map<CommandId, QAction*> actions_;  // of the table's commands
  std::vector<QMenu*> submenus_;           // grey when all their entries are
  std::vector<QAction*> recent_;           // with the line in front of them
  QMenu* file_menu_ = nullptr;
  QMenu* list_menu_ = nullptr;
};

}  // namespace corvelin
