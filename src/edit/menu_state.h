// SPDX-License-Identifier: GPL-2.0-or-later
// What the menus show of the document, as data that any shell can show: the entries of the List
// menu, the recent files, and which commands are grey.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "edit/commands.h"
#include "model/document.h"

namespace corvelin {

struct Editor;

/// The entries of the List menu, with the commands from `first_part_command` on: number, time, kind
/// and title of each of the first 60 parts.
std::vector<std::string> part_list(const Document& document);

/// An entry of a menu and the command behind it.
struct MenuEntry {
  CommandId id;
  std::string text;
};

/// The recent files at the end of the File menu, with the commands from `first_recent_command` on.
std::vector<MenuEntry> recent_entries();

/// Whether the menu entry of a command is live. Keys don't ask: they run into the checks of the
/// command.
bool is_command_enabled(const Editor& editor, CommandId id);

/// Which bit of `MenuStates` the live state of a command belongs to; 0 for one that is always live.
std::uint8_t state_bit(const Command& command);

/// Whether the mark of a command is set.
bool is_checked(const Command& command);

}  // namespace corvelin
