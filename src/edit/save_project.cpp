// SPDX-License-Identifier: GPL-2.0-or-later
// Saving of projects and cue sheets.
#include "edit/save_project.h"

#include <fmt/format.h>

#include <string>

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/save_audio.h"
#include "exchange/cue_sheet.h"
#include "exchange/project_file.h"
#include "model/document.h"
#include "opening/file_kind.h"
#include "opening/open_state.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "settings/note.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// False when the user cancels.
bool ask_save_path(Editor& editor, bool as_cue, bool current_is_cue) {
  const FileType project = {.name = "Corvelin Project (*.cvp)", .pattern = "*.cvp"};
  const FileType sheet = {.name = "Cue Sheet (*.cue)", .pattern = "*.cue"};
  FileDialog dialog = {.title = std::string(as_cue ? ui_text(row::edit_cue_sheet)
                                                   : ui_text(row::save_project_or_sheet)),
                       .path = editor.open_state.project_name,
                       .types = {project, sheet},
                       .warn_existing = true};
  if (as_cue) dialog.types = {sheet};
  if (!as_cue && current_is_cue) dialog.types = {sheet, project};
  const auto answer = host().ask_for_new_file(dialog);
  if (answer) editor.open_state.project_name = *answer;
  return answer.has_value();
}

bool may_name_other_audio() {
  const MessageBox box = {.caption = std::string(ui_text(row::save_project_or_sheet)),
                          .text = std::string(ui_text(row::adapted_cues_differ)),
                          .icon = BoxIcon::question,
                          .buttons = BoxButtons::ok_cancel,
                          .default_answer = BoxAnswer::ok};
  return host().show_message_box(box) == BoxAnswer::ok;
}

// Nothing is written, and that is no failure, where the user thinks better of it.
bool write_sheet(const Editor& editor, const std::string& name, std::string& reason) {
  if (names_other_audio(editor.document, editor.open_state) && !may_name_other_audio()) return true;
  return save_cue_sheet(editor.document, editor.open_state, name, reason);
}

bool write_project_file(Editor& editor, const std::string& name) {
  const std::error_code error = write_project(editor.document, editor.selection, editor.open_state,
                                              name, play_position(editor.playback));
  if (error) {
    show_error(error.message() + "\n" + name);
  } else {
    add_recent(name);
  }
  return !error;
}

// False, and why where that has not been shown, after a failure.
bool write_by_extension(Editor& editor, const std::string& name, std::string& reason) {
  if (file_kind(name) == FileKind::cue_sheet) return write_sheet(editor, name, reason);
  if (file_kind(name) == FileKind::project) return write_project_file(editor, name);
  reason = format_row(ui_text(row::name_must_end), name);
  return false;
}

}  // namespace

bool save_project(Editor& editor, bool force_dialog, bool as_cue) {
  show_note_once(Note::project_files);
  std::string& name = editor.open_state.project_name;
  const bool is_new = name.empty();
  if (is_new) name = with_extension(proposed_save_name(editor), as_cue ? ".cue" : ".cvp");
  if ((is_new || force_dialog) &&
      !ask_save_path(editor, as_cue, file_kind(name) == FileKind::cue_sheet)) {
    if (is_new) name.clear();
    return false;
  }
  if (as_cue && !extension_of(name).empty()) name = with_extension(name, ".cue");
  std::string reason;
  if (write_by_extension(editor, name, reason)) return true;
  show_error(
      fmt::format("{}{}{}", ui_text(row::could_not_write), reason.empty() ? "" : "\n", reason));
  return false;
}

bool save_project_or_sheet(Editor& editor) { return save_project(editor, false, false); }
bool save_project_as(Editor& editor) { return save_project(editor, true, false); }

bool confirm_discard_changes(Editor& editor) {
  const bool may_be_lost = editor.open_state.document_modified && !editor.document.parts.empty();
  if (!may_be_lost || (settings.warn & warn_of_unsaved_changes) == 0) return true;
  const BoxAnswer answer =
      host().show_message_box({.caption = "Corvelin",
                               .text = std::string(ui_text(row::changes_unsaved)),
                               .icon = BoxIcon::question,
                               .buttons = BoxButtons::yes_no_cancel,
                               .default_answer = BoxAnswer::cancel});
  if (answer == BoxAnswer::yes) return save_project(editor, false, false);
  if (answer == BoxAnswer::no) editor.open_state.document_modified = false;
  return answer == BoxAnswer::no;
}

}  // namespace corvelin
