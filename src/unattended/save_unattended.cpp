// SPDX-License-Identifier: GPL-2.0-or-later
// The names of saves that nobody is asked about.
#include "unattended/save_unattended.h"

#include <fmt/format.h>

#include <system_error>

#include "edit/editor.h"
#include "exchange/split_save.h"
#include "model/document.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/host.h"
#include "platform/long_run.h"
#include "platform/text/path.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

// A file that is in the way may be anybody's work. Who answers for all is asked too.
bool may_replace(const Editor& editor, const std::string& name) {
  if (!file_facts(name).found || is_source(editor, name)) return true;
  const MessageBox box = {
      .caption = std::string(ui_text(row::warning)),
      .text = fmt::format("{} {}\n\nReplace it?", ui_text(row::file_exists), name),
      .icon = BoxIcon::warning,
      .buttons = BoxButtons::yes_no,
      .default_answer = BoxAnswer::no};
  return host().show_message_box(box) == BoxAnswer::yes;
}

}  // namespace

SaveOutcome save_unattended(Editor& editor, bool overwrite) {
  if (overwrite) return save_over_source(editor);
  const std::string& audio = editor.open_state.audio_name;
  const std::string name = audio + std::string(extension_of(audio));
  return may_replace(editor, name) ? save_under_name(editor, name) : SaveOutcome::not_started;
}

SaveOutcome split_unattended(Editor& editor, const std::string& folder) {
  if (editor.document.parts.empty() || !may_save_from_sources(editor.document))
    return SaveOutcome::not_started;
  std::string& target = editor.open_state.split_dest_folder;
  target = folder.empty() ? std::string(folder_of(editor.open_state.audio_name))
                          : in_current_folder(folder);
  if (const std::error_code error = create_folders(target)) {
    show_error(error.message() + "\n" + target);
    return SaveOutcome::failed;
  }
  if (!target.ends_with('/')) target += '/';
  SplitRun run(editor.document, editor.selection, editor.open_state, target, 1,
               editor.batch_active);
  drive(run);
  return run.result() == SplitResult::finished ? SaveOutcome::saved : SaveOutcome::failed;
}

}  // namespace corvelin
