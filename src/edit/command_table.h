// SPDX-License-Identifier: GPL-2.0-or-later
// The table of all commands: each one's texts, keys, checks and operation, and what the dispatcher
// does around it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

#include "edit/command_ids.h"
#include "edit/outcome.h"
#include "settings/settings.h"
#include "text/ui_text.h"

namespace corvelin {

struct Editor;

/// What holds of a command, as bits.
namespace rule {
enum : std::uint32_t {
  // When it runs. Else it does nothing.
  on_document = 1U << 0,    // with a document
  on_writing = 1U << 1,     // while a recording writes; otherwise a later row of the id counts
  while_silent = 1U << 2,   // while no audio plays
  while_unarmed = 1U << 3,  // while no recording is armed
  while_stopped = 1U << 4,  // while neither, which is told

  // When menus and buttons show it live, where that is not just as it runs with a document or
  // without.
  live_when_stopped = 1U << 5,    // nothing plays and no recording is armed
  live_with_levels = 1U << 6,     // the document has levels to change
  live_with_undo = 1U << 7,       // there is a step to take back
  live_with_transport = 1U << 8,  // there is a document or an armed recording

  // What is done around it.
  undo_selection = 1U << 9,     // in front: an undo step for the ends of the selection
  undo_document = 1U << 10,     // or one for the whole document
  modifies = 1U << 11,          // the document then differs from its saved project
  modifies_by_cuts = 1U << 12,  // the same, where the table of parts has changed
  recuts = 1U << 13,            // cursor and selection are brought onto frames
  follows_cursor = 1U << 14,    // `current_part` becomes that of the cursor
  names_parts = 1U << 15,       // parts of several files get names
  relists = 1U << 16,           // the List menu is built anew
  reopens = 1U << 17,  // the same with all menus and the title: another document may be open
  refreshes_places = 1U << 18,  // cursor, selection and parts are shown anew
  refreshes_all = 1U << 19,     // the same with title and check marks

  by_dialog = 1U << 20,      // nothing of that is done before the operation calls `carry_out`
  repeats = 1U << 21,        // its key repeats while it is held
  steps_by_run = 1U << 22,   // several in a row, at one part, are one undo step
  steps_if_done = 1U << 23,  // no undo step stays of one that was refused
};
}  // namespace rule

/// The mark of a menu entry: set while these bits of the setting have this value.
struct CheckMark {
  std::variant<std::uint16_t Settings::*, std::uint32_t Settings::*> setting;
  std::uint32_t bits = 0;  // none: there is no mark
  std::uint32_t value = 0;
  bool is_radio = false;  // one of a group; else a box to be checked
};

/// For what has no text.
constexpr TextRow unnamed = {.section = men, .number = 999};

/// One row of the table.
struct Command {
  CommandId id;
  std::string_view name;  // of the operation, as edit lines call it
  TextRow text;           // of the menu entry, or of the tooltip where there is none
  std::string_view keys;  // accelerators, parted by ", "
  std::uint32_t rules;
  Outcome (*run)(Editor& editor);                    // null: of a change that no command makes
  Outcome (*check)(const Editor& editor) = nullptr;  // in front of it all
  TextRow undo_label = unnamed;                      // where it is not `text`
  CheckMark mark = {};

  [[nodiscard]] constexpr bool has(std::uint32_t any_of) const { return (rules & any_of) != 0; }
};

std::span<const Command> command_table();

/// The row of a command that counts at the moment, or null when no command has the id.
const Command* command_of(const Editor& editor, CommandId id);

/// The id of a command by the name of its operation.
std::optional<CommandId> find_command(std::string_view name);

/// What the menu or a button says, with its "&" and key; empty for a command that has keys alone.
std::string_view text_of(const Command& command);

// Changes that no command makes, and what is done around them.
extern const Command open_change;       // files were opened by name
extern const Command append_change;     // files were appended by name
extern const Command cut_change;        // ranges were cut out by their places
extern const Command keep_change;       // the same for what lies outside of them
extern const Command cue_change;        // a cue was set at its place
extern const Command selection_change;  // the selection was set by mouse or by its place
extern const Command level_change;      // a level was dragged
extern const Command border_change;     // a border was dragged

}  // namespace corvelin
