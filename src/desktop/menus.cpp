// Menus out of the tree.
#include "desktop/menus.h"

#include <QMenu>
#include <QMenuBar>

#include "desktop/qt_text.h"
#include "edit/menu_state.h"
#include "edit/undo.h"
#include "text/ui_text.h"

namespace corvelin {

Menus::Menus(QMenuBar& bar, const Look& look) : bar_(bar) {
  bar.setPalette(menu_palette(look));
  for (int m = 0; m < 6; ++m) bar.addMenu(as_qstring(ui_text(men, static_cast<unsigned>(m))));
}

void Menus::rebuild_part_list() {}
void Menus::rebuild_recent_menu() {}
void Menus::show_states() {}
void Menus::show_marks() {}

}  // namespace corvelin
