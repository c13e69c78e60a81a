// SPDX-License-Identifier: GPL-2.0-or-later
// What the buttons of the toolbar and the panel say of themselves.
#pragma once

#include <string>

#include "edit/commands.h"

namespace corvelin {

struct Editor;

/// The tooltip of a command's button, with its key, and for Undo with the step that it takes back.
std::string button_tooltip(const Editor& editor, CommandId id);

/// The same without the key and without the step: what the button is called.
std::string button_name(const Editor& editor, CommandId id);

}  // namespace corvelin
