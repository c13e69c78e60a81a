// SPDX-License-Identifier: GPL-2.0-or-later
// Opening and closing by command.
#include "edit/document_commands.h"

#include <string>
#include <system_error>
#include <vector>

#include "audio/playback.h"
#include "edit/commands.h"
#include "edit/editor.h"
#include "edit/open_dialog.h"
#include "edit/open_files.h"
#include "edit/save_project.h"
#include "exchange/cue_sheet.h"
#include "exchange/open_document.h"
#include "model/document.h"
#include "model/selection.h"
#include "opening/append.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// Asks for the sheet, which becomes the project's name. False when the user cancels; no project is
// named then.
bool choose_cue_sheet(OpenState& open_state) {
  open_state.project_name.clear();
  const auto path =
      host().ask_for_existing_file({.title = std::string(ui_text(row::open_file)),
                                    .path = std::string(folder_of(open_state.audio_name)),
                                    .types = {{.name = "Cue Sheets (*.cue)", .pattern = "*.cue"},
                                              {.name = "All files (*.*)", .pattern = "*.*"}}});
  if (!path) return false;
  open_state.project_name = *path;
  return true;
}

}  // namespace

bool open_by_dialog(Editor& editor) {
  return confirm_discard_changes(editor) && open_file_dialog(editor);
}

bool close(Editor& editor) {
  if (!confirm_discard_changes(editor)) return false;
  close_all(editor);
  return true;
}

bool batch(Editor& editor) {
  return close(editor) && editor.open_batch_dialog && editor.open_batch_dialog(editor);
}

bool open_recent(Editor& editor, std::size_t index) {
  if (!confirm_discard_changes(editor)) return false;
  if (open_file(editor, settings.file_recent[index])) return true;
  std::erase_if(settings.file_recent,
                [](const std::string& name) { return static_cast<bool>(InputFile().open(name)); });
  host().rebuild_recent_menu();
  return false;
}

Joined append_in_one_step(Editor& editor, std::span<const std::string> names) {
  const std::vector<std::string> files = without_playlists(names);
  if (files.empty()) return {.failed = names.front()};
  Joined joined;
  carry_out(editor, append_change, [&] {
    joined = append_documents(editor.document, files);
    if (joined.count == 0) return Result::refused;
    clear_selection(editor.selection);
    seek_to(editor.playback, editor.document.total_size);
    return Result::done;
  });
  return joined;
}

bool load_cue_sheet_over_audio(Editor& editor) {
  if (!choose_cue_sheet(editor.open_state)) return false;
  show_cue_sheet_note(editor.document);
  const auto load = [&editor]() -> Outcome {
    OpenFault fault = load_cue_sheet(editor.document, editor.selection, editor.open_state, true);
    if (fault.cause.empty()) return Result::done;
    return {Result::refused, MessageBox{.caption = std::string(ui_text(row::file_open_failed)),
                                        .text = editor.open_state.project_name,
                                        .cause = std::move(fault.cause),
                                        .icon = BoxIcon::warning}};
  };
  return carry_out(editor, *command_of(editor, command::load_cue_sheet_over_audio), load) ==
         Result::done;
}

bool edit_cue_sheet(Editor& editor) {
  const std::string& sheet = editor.open_state.project_name;
  if (!save_project(editor, true, true) || !file_facts(sheet).found) return false;
  if (!open_for_user(sheet)) return false;
  const BoxAnswer answer =
      host().show_message_box({.caption = "Corvelin",
                               .text = std::string(ui_text(row::reload_cue_sheet)),
                               .icon = BoxIcon::question,
                               .buttons = BoxButtons::yes_no,
                               .default_answer = BoxAnswer::yes});
  return answer != BoxAnswer::yes || open_file(editor, sheet);
}

}  // namespace corvelin
