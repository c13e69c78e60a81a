// SPDX-License-Identifier: GPL-2.0-or-later
// The menu bar as data: which entries stand in which menu, in their order. Their texts are those of
// the commands; the List menu and the recent files behind the File menu are filled as the document
// has it (menu_state).
#pragma once

#include <span>

#include "edit/commands.h"
#include "text/ui_text.h"

namespace corvelin {

struct Menu;

/// A command, a menu, or neither: a line between groups.
struct MenuRow {
  CommandId command = 0;
  const Menu* menu = nullptr;
};

struct Menu {
  std::uint32_t title;  // row of `men`
  std::span<const MenuRow> rows;
};

extern const Menu file_menu;
extern const Menu list_menu;

/// The menus of the bar, from left to right. An entry need not be there in every layout.
std::span<const Menu* const> menu_bar();

/// Whether the layout that the settings choose has the entry.
bool has_entry(const MenuRow& row);

}  // namespace corvelin
