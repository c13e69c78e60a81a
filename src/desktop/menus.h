// The menu bar: the core's menu tree as Qt's menus, their marks and grey entries.
#pragma once

#include <map>

#include "desktop/look.h"
#include "edit/commands.h"

class QAction;
class QMenu;
class QMenuBar;

namespace corvelin {

class Menus {
 public:
  Menus(QMenuBar& bar, const Look& look);

  void rebuild_part_list();
  void rebuild_recent_menu();
  void show_states();  // grey or live
  void show_marks();   // check and radio marks

 private:
  QMenuBar& bar_;
  std::map<CommandId, QAction*> actions_;
  QMenu* list_menu_ = nullptr;
  QMenu* file_menu_ = nullptr;
};

}  // namespace corvelin
