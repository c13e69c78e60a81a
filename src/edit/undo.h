// SPDX-License-Identifier: GPL-2.0-or-later
// Undo: a stack of snapshots taken before a change. An entry that covers a change of the part table
// holds the whole document, which costs little as its files are shared; one for a change of the
// selection only its two ends. There is no redo.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/document.h"

namespace corvelin {

struct Editor;

/// What a step was taken for, and what the last of its kind left.
struct UndoRun {
  std::uint16_t command = 0;  // its id
  PartIndex part = no_part;
  std::uint64_t revision = 0;  // of the document

  bool operator==(const UndoRun&) const = default;
};

struct UndoEntry {
  EditPosition undo_sel_beg = no_position;
  EditPosition undo_sel_end = no_position;
  EditPosition undo_cursor = 0;           // or the place that was played
  std::optional<Document> undo_snapshot;  // none for a change of the selection
  std::string undo_label;                 // UTF-8, as the menu shows it
  UndoRun undo_run = {};                  // that goes on while nothing else changes
};

/// The state before a change, to be pushed once something changed. `label` is the menu text of the
/// command, with its "&" and key. None with `max_undo` 0.
std::optional<UndoEntry> undo_entry(const Editor& editor, bool with_snapshot,
                                    std::string_view label);

/// Takes an entry. The oldest one is lost from a full stack.
void undo_push(Editor& editor, std::optional<UndoEntry> entry);
void undo_push(Editor& editor, bool with_snapshot, std::string_view label);

/// Takes the newest step back: the part table with its files, fades, names and scale of times as it
/// was, or the selection alone. Tags and header bits are no part of a step. False when there is
/// none.
bool undo_pop(Editor& editor);

/// Forgets all steps. Happens by itself when a document is closed.
void undo_clear(Editor& editor);

/// The menu entry of the Undo command, which names the step that it would take back.
std::string undo_menu_text(const Editor& editor);

}  // namespace corvelin
