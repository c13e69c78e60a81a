// SPDX-License-Identifier: GPL-2.0-or-later
// The one road of every user action to the model: a command by its id, with the checks in front of
// it and all that stands around it by its row of the table.
#pragma once

#include <cstdint>
#include <functional>

#include "edit/command_table.h"

namespace corvelin {

struct Editor;

/// The commands of the List menu: one for each of the first parts, and one more than has an entry.
constexpr CommandId first_part_command = 1200;
constexpr CommandId last_part_command = 1260;

/// The commands of the recent files at the end of the File menu.
constexpr CommandId first_recent_command = 1100;
constexpr CommandId last_recent_command = 1109;

enum class DispatchResult {
  done,
  nothing,      // it found nothing to do
  refused,      // or failed; the user has been told
  unknown,      // no command has this id
  no_document,  // it needs one
  not_now,      // audio plays or a recording is armed
  busy,         // another command is under way
};

DispatchResult dispatch_command(Editor& editor, CommandId id);

/// Runs an operation with all that stands around a command: the undo step in front, then the repair
/// of cursor, selection and `current_part`, the flag for unsaved changes, the refresh of lists and
/// view, and the box. For the dispatcher, and for what has arguments: the OK of a dialog, files
/// that were dropped, a line with places.
Result carry_out(Editor& editor, const Command& command, const std::function<Outcome()>& operation);

/// Whether nothing plays and no recording is armed. If not, the user is told to stop that first.
bool ensure_stopped(const Editor& editor);

}  // namespace corvelin
