// SPDX-License-Identifier: GPL-2.0-or-later
// Start, stop and choices.
#include "unattended/batch_dialog.h"

#include "edit/editor.h"
#include "opening/open_state.h"
#include "settings/note.h"
#include "text/boxes.h"
#include "text/text_rows.h"
#include "text/ui_text.h"
#include "unattended/batch_leftovers.h"

namespace corvelin {

bool BatchDialog::accept() {
  if (is_running()) return false;
  for (const BatchField field : batch_fields) {
    const std::string fault = job.fault_in(field);
    if (fault.empty()) continue;
    show_refusal(fault);
    return false;
  }
  if (job.has(BatchOption::overwrite_originals)) {
    const BoxAnswer answer =
        host().show_message_box({.caption = std::string(ui_text(row::warning)),
                                 .text = std::string(ui_text(row::overwrite_originals)),
                                 .icon = BoxIcon::warning,
                                 .buttons = BoxButtons::ok_cancel,
                                 .default_answer = BoxAnswer::cancel});
    if (answer != BoxAnswer::ok) return false;
  }
  offer_removal_of_leftovers(job);
  run.reset();  // which ends with the batch before a new one begins
  run = std::make_unique<BatchRun>(editor, job, between_slices);
  return true;
}

void BatchDialog::stop() const {
  if (is_running()) run->cancel();
}

void BatchDialog::cancel() {
  stop();
  if (!is_running()) run.reset();
  editor.open_state.document_modified = false;
}

void BatchDialog::choose(BatchOption option, bool is_on) {
  job.set_option(option, is_on);
  if (option != BatchOption::skip_unchanged) stop();
  const bool splits = option == BatchOption::pause_detection || option == BatchOption::auto_cue;
  if (splits && is_on) show_note_once(Note::batch);
}

bool batch_dialog(Editor& editor, BatchJob& job) {
  BatchDialog dialog(editor, job);
  return show_dialog(dialog);
}

}  // namespace corvelin
