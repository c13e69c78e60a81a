// Every command of the user by its id: the table, the checks in front of each command, and the
// operations that are nothing but a small step. What the others do is told where they are.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "text/ui_text.h"

namespace corvelin {

using CommandId = std::uint16_t;

enum class CommandNeeds { anytime, a_document };
enum class StopRule { runs_on, not_playing, stopped };
enum class LiveWhen { anytime, a_document, stopped, levels, undo, transport };

/// One row of the table.
struct Command {
  CommandId id;
  std::string_view name;  // of the operation
  TextSection section;    // of the text row
  std::uint32_t row;      // or `no_row`
  std::string_view keys;  // accelerators, parted by ", "
  CommandNeeds needs;
  StopRule stop;
  LiveWhen live;  // in menus and buttons
  bool (*run)();  // false: refused or failed, which has been told; null: still to come
};

constexpr std::uint32_t no_row = 999;

std::span<const Command> command_table();

/// The commands of the List menu: one for each of the first parts, and one more than has an entry.
constexpr CommandId first_part_command = 1200;
constexpr CommandId last_part_command = 1260;

/// The commands of the recent files at the end of the File menu.
constexpr CommandId first_recent_command = 1100;
constexpr CommandId last_recent_command = 1109;

enum class DispatchResult {
  done,
  refused,      // or failed; the user has been told
  unknown,      // no command has this id
  no_document,  // it needs one
  not_now,      // audio plays
  missing,      // its operation is still to come, which has been told
};

DispatchResult dispatch_command(CommandId id);

/// The id of a command by the name of its operation.
std::optional<CommandId> find_command(std::string_view name);

/// Whether nothing plays and no recording is armed. If not, the user is told to stop that first.
bool ensure_stopped();

}  // namespace corvelin
