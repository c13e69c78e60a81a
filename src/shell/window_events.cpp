// SPDX-License-Identifier: GPL-2.0-or-later
// Drops and the scroll bar's thumb.
#include "shell/window_events.h"

#include <algorithm>
#include <cstdint>

#include "audio/playback.h"
#include "edit/commands.h"
#include "edit/document_commands.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "edit/save_project.h"
#include "model/document.h"
#include "model/selection.h"
#include "model/time_mapping.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "shell/status_display.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

BoxAnswer ask_whether_to_append() {
  return host().show_message_box({.caption = std::string(ui_text(row::open_file)),
                                  .text = std::string(ui_text(row::append_files)),
                                  .icon = BoxIcon::question,
                                  .buttons = BoxButtons::yes_no_cancel,
                                  .default_answer = BoxAnswer::yes});
}

void open_dropped(Editor& editor, std::span<const std::string> names) {
  if (!confirm_discard_changes(editor)) return;
  carry_out(editor, open_change, [names, &editor] {
    const Joined joined = open_files(editor, names);
    if (joined.count == 0) return Result::refused;
    editor.open_state.document_modified = names.size() > 1 && joined.count > 1;
    clear_selection(editor.selection);
    seek_to(editor.playback, 0);
    return Result::done;
  });
}

}  // namespace

void drop_files(Editor& editor, std::span<const std::string> names, bool in_graph) {
  if (names.empty() || is_busy()) return;
  const Busy busy;
  if (!ensure_stopped(editor)) return;
  if (in_graph && editor.document.total_size != 0) {
    const BoxAnswer answer = ask_whether_to_append();
    if (answer == BoxAnswer::cancel) return;
    if (answer == BoxAnswer::yes) {
      append_in_one_step(editor, names);
      return;
    }
  }
  open_dropped(editor, names);
}

void scroll_to(Editor& editor, int position) {
  if (editor.document.total_size == 0) return;
  const auto share = static_cast<std::uint64_t>(std::clamp(position, 0, scroll_end));
  seek_to(editor.playback,
          from_time_scale(editor.document, static_cast<std::uint32_t>(editor.document.total_size *
                                                                      share / scroll_end)));
  if (!editor.playback.is_playing) host().refresh_view(Refresh::places);
}

}  // namespace corvelin
