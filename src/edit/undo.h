// Undo: a stack of snapshots taken before a change. An entry that covers a change of the part table
// holds the whole document as project text; one for a change of the selection only its two ends.
// There is no redo.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/document.h"

namespace corvelin {

struct UndoEntry {
  EditPosition undo_sel_beg = no_position;
  EditPosition undo_sel_end = no_position;
  std::optional<std::string> undo_snapshot;  // project text; none for a change of the selection
  std::string undo_label;                    // UTF-8, as the menu shows it
};

/// Newest first. At most `max_undo` entries, and never more than 50.
extern std::vector<UndoEntry> undo_stack;

/// Takes an entry before a change. `label` is the menu text of the command, with its "&" and key.
/// The oldest entry is lost from a full stack. With `max_undo` 0 nothing is kept.
void undo_push(bool with_snapshot, std::string_view label);

/// Takes the newest step back: the document as it was, or the selection alone. An entry that can't
/// be restored is gone all the same. False when that fails, and when there is none.
bool undo_pop();

/// Forgets all steps. Happens by itself when a document is closed.
void undo_clear();

/// The menu entry of the Undo command, which names the step that it would take back.
std::string undo_menu_text();

}  // namespace corvelin
