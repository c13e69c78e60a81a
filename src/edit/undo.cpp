// SPDX-License-Identifier: GPL-2.0-or-later
// The undo stack.
#include "edit/undo.h"

#include <algorithm>
#include <utility>

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/places.h"
#include "edit/transport.h"
#include "model/selection.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

constexpr std::size_t most_entries = 50;

std::size_t entry_limit() { return std::min<std::size_t>(settings.max_undo, most_entries); }

// A label has room for 29 characters in the menu, and one whose menu text is long ends in dots
// after 24.
std::string undo_label(std::string_view menu_text) {
  constexpr std::size_t most_characters = 29;
  constexpr std::size_t kept_of_long_ones = 24;
  const std::u16string plain = bytes_to_wide(menu_text_plain(menu_text), true);
  std::u16string label = cut_to_units(plain, most_characters);
  const bool is_long = count_units(menu_text) > kept_of_long_ones;
  if (is_long && label.size() >= kept_of_long_ones)
    label = cut_to_units(label, kept_of_long_ones) + u"...";
  return wide_to_bytes(label, true);
}

void restore(Editor& editor, Document snapshot, EditPosition cursor) {
  fall_silent(editor);
  const std::uint8_t vbr = snapshot.stream.vbr;
  snapshot.stream = editor.document.stream;
  snapshot.stream.vbr = vbr;
  snapshot.header_rewrite = editor.document.header_rewrite;
  editor.document = std::move(snapshot);
  touch(editor.document);
  clear_selection(editor.selection);
  editor.selection.cursor = std::min(cursor, editor.document.total_size);
  editor.document.current_part = part_at(editor.document, editor.selection.cursor);
  name_parts_from_files(editor.document);
  editor.open_state.document_modified = true;
}

}  // namespace

std::optional<UndoEntry> undo_entry(const Editor& editor, bool with_snapshot,
                                    std::string_view label) {
  if (entry_limit() == 0) return std::nullopt;
  UndoEntry entry = {.undo_sel_beg = editor.selection.sel_beg,
                     .undo_sel_end = editor.selection.sel_end,
                     .undo_cursor = play_position(editor.playback),
                     .undo_snapshot = std::nullopt,
                     .undo_label = undo_label(label)};
  if (with_snapshot) entry.undo_snapshot = editor.document;
  return entry;
}

void undo_push(Editor& editor, std::optional<UndoEntry> entry) {
  if (!entry) return;
  if (editor.undo_stack.size() >= entry_limit()) editor.undo_stack.resize(entry_limit() - 1);
  editor.undo_stack.insert(editor.undo_stack.begin(), std::move(*entry));
  host().update_menu_state(undo_states);
}

void undo_push(Editor& editor, bool with_snapshot, std::string_view label) {
  undo_push(editor, undo_entry(editor, with_snapshot, label));
}

bool undo_pop(Editor& editor) {
  if (entry_limit() == 0 || editor.undo_stack.empty()) return false;
  UndoEntry entry = std::move(editor.undo_stack.front());
  editor.undo_stack.erase(editor.undo_stack.begin());
  host().update_menu_state(undo_states);
  if (entry.undo_snapshot) restore(editor, std::move(*entry.undo_snapshot), entry.undo_cursor);
  set_selection(editor.selection, entry.undo_sel_beg, entry.undo_sel_end);
  settle_places(editor);  // behind an entry that was not restored the frames are others
  return true;
}

void undo_clear(Editor& editor) {
  editor.undo_stack.clear();
  host().update_menu_state(undo_states);
}

std::string undo_menu_text(const Editor& editor) {
  std::string text(ui_text(row::undo));
  if (editor.undo_stack.empty()) return text;
  const std::size_t end = std::min(text.find('\t'), text.size());
  return text.insert(end, ": " + editor.undo_stack.front().undo_label);
}

}  // namespace corvelin
