// SPDX-License-Identifier: GPL-2.0-or-later
// The undo stack.
#include "edit/undo.h"

#include <algorithm>
#include <utility>

#include "audio/playback.h"
#include "audio/the_player.h"
#include "document/open_state.h"
#include "edit/places.h"
#include "edit/transport.h"
#include "model/selection.h"
#include "model/the_document.h"
#include "platform/host.h"
#include "platform/text.h"
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

void restore(Document snapshot, EditPosition cursor) {
  fall_silent();
  const std::uint8_t vbr = snapshot.stream.vbr;
  snapshot.stream = document.stream;
  snapshot.stream.vbr = vbr;
  snapshot.header_rewrite = document.header_rewrite;
  document = std::move(snapshot);
  touch(document);
  clear_selection(selection);
  selection.cursor = std::min(cursor, document.total_size);
  document.current_part = part_at(document, selection.cursor);
  name_parts_from_files(document);
  open_state.document_modified = true;
}

}  // namespace

std::vector<UndoEntry> undo_stack;

std::optional<UndoEntry> undo_entry(bool with_snapshot, std::string_view label) {
  if (entry_limit() == 0) return std::nullopt;
  UndoEntry entry = {.undo_sel_beg = selection.sel_beg,
                     .undo_sel_end = selection.sel_end,
                     .undo_cursor = play_position(playback),
                     .undo_snapshot = std::nullopt,
                     .undo_label = undo_label(label)};
  if (with_snapshot) entry.undo_snapshot = document;
  return entry;
}

void undo_push(std::optional<UndoEntry> entry) {
  if (!entry) return;
  if (undo_stack.size() >= entry_limit()) undo_stack.resize(entry_limit() - 1);
  undo_stack.insert(undo_stack.begin(), std::move(*entry));
  host().update_menu_state(undo_states);
}

void undo_push(bool with_snapshot, std::string_view label) {
  undo_push(undo_entry(with_snapshot, label));
}

bool undo_pop() {
  if (entry_limit() == 0 || undo_stack.empty()) return false;
  UndoEntry entry = std::move(undo_stack.front());
  undo_stack.erase(undo_stack.begin());
  host().update_menu_state(undo_states);
  if (entry.undo_snapshot) restore(std::move(*entry.undo_snapshot), entry.undo_cursor);
  set_selection(selection, entry.undo_sel_beg, entry.undo_sel_end);
  settle_places();  // behind an entry that was not restored the frames are others
  return true;
}

void undo_clear() {
  undo_stack.clear();
  host().update_menu_state(undo_states);
}

std::string undo_menu_text() {
  std::string text(ui_text(row::undo));
  if (undo_stack.empty()) return text;
  const std::size_t end = std::min(text.find('\t'), text.size());
  return text.insert(end, ": " + undo_stack.front().undo_label);
}

}  // namespace corvelin
