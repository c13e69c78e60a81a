// SPDX-License-Identifier: GPL-2.0-or-later
// Fields and run of split save.
#include "edit/split_dialog.h"

#include <system_error>

#include "edit/editor.h"
#include "edit/save_audio.h"
#include "opening/open_state.h"
#include "platform/files/file.h"
#include "platform/host.h"
#include "platform/text/path.h"
#include "platform/text/text.h"
#include "settings/settings.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"

namespace corvelin {

namespace {

std::string first_folder(const Editor& editor) {
  if (settings.workdir_onsave != 0 && !settings.working_dir.empty()) return settings.working_dir;
  return std::string(folder_of(editor.open_state.audio_name));
}

bool make_missing_folder(const std::string& folder) {
  if (file_facts(folder).found) return true;
  const MessageBox box = {.caption = std::string(ui_text(row::destination_folder)),
                          .text = format_row(ui_text(row::make_folder), folder),
                          .icon = BoxIcon::question,
                          .buttons = BoxButtons::yes_no,
                          .default_answer = BoxAnswer::yes};
  if (host().show_message_box(box) != BoxAnswer::yes) return false;
  const std::error_code error = create_folders(folder);
  if (error) show_error(error.message() + "\n" + folder);
  return !error;
}

}  // namespace

void SplitDialog::begin() {
  cues_text = format_row(ui_text(row::number_of_cues), count_split_regions(editor.document));
  const std::string& last = editor.open_state.split_dest_folder;
  folder = last.empty() ? first_folder(editor) : last;
  pattern = settings.split_pattern;
  first_number = 1;
  creates_id3v11 = settings.split_id3v11 != 0;
  copies_id3v2 = settings.split_id3v2 != 0;
  overlaps = (settings.split_overlap & split_overlap_on) != 0;
  overlap_seconds = settings.split_overlap & (split_overlap_on - 1);
  run.reset();
}

bool SplitDialog::accept() {
  cancel();
  if (folder.find('/') == std::string::npos) return false;
  if (!folder.ends_with('/')) folder += '/';
  if (!may_save_from_sources(editor.document) || !make_missing_folder(folder)) return false;
  editor.open_state.split_dest_folder = folder;
  run = std::make_unique<SplitRun>(editor.document, editor.selection, editor.open_state, folder,
                                   first_number, editor.batch_active);
  return true;
}

void SplitDialog::cancel() {
  store();
  if (run) run->cancel();
}

void SplitDialog::store() const {
  editor.open_state.split_dest_folder = folder;
  settings.split_pattern = cut_to_units(pattern, longest_setting);
  settings.split_id3v11 = creates_id3v11 ? 1 : 0;
  settings.split_id3v2 = copies_id3v2 ? 1 : 0;
  const unsigned seconds = overlap_seconds & (split_overlap_on - 1);
  settings.split_overlap =
      static_cast<std::uint16_t>(overlaps ? seconds | split_overlap_on : seconds);
}

void SplitDialog::restore_defaults() {
  if (!confirm_defaults()) return;
  pattern = default_split_pattern;
  first_number = 1;
  creates_id3v11 = copies_id3v2 = overlaps = false;
  overlap_seconds = 0;
}

}  // namespace corvelin
