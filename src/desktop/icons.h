// SPDX-License-Identifier: GPL-2.0-or-later
// The pictures of the commands: one family of plain shapes, drawn for the pixels of the screen that
// they appear on, so that their edges are sharp at every size and ratio.
#pragma once

#include <QColor>
#include <QIcon>

#include "edit/command_ids.h"

namespace corvelin {

/// What a picture is drawn with.
struct IconColours {
  QColor ink;     // the shapes
  QColor accent;  // what is selected
};

/// Pictures for what two buttons do while fast play runs.
constexpr CommandId slower_icon = 1;
constexpr CommandId faster_icon = 2;

/// The picture of a command, by its id. A null icon for one that has none.
QIcon command_icon(CommandId id, const IconColours& colours);

}  // namespace corvelin
