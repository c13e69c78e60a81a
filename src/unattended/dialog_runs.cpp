// SPDX-License-Identifier: GPL-2.0-or-later
// Begins each dialog, waits for what it measures, and takes its OK.
#include "unattended/dialog_runs.h"

#include "edit/editor.h"
#include "model/selection.h"

namespace corvelin {

namespace {

void select_whole_stream(Editor& editor) {
  editor.selection.sel_beg = 0;
  editor.selection.sel_end = editor.document.total_size;
}

}  // namespace

bool run_unattended(NormalizeDialog& dialog) {
  drive(dialog);
  return dialog.close_unattended();
}

bool run_unattended(PauseDialog& dialog) {
  if (!dialog.accept()) return false;
  drive(dialog);
  return dialog.pause_found > 0 && !dialog.has_broken_off;
}

bool run_unattended(AutoCueDialog& dialog) {
  return dialog.accept() && dialog.result == Result::done;
}

bool normalize_whole_stream(Editor& editor) {
  select_whole_stream(editor);
  NormalizeDialog dialog(editor);
  dialog.begin();
  return dialog.state == NormalizeDialog::State::scanning && run_unattended(dialog);
}

bool cue_pauses_of_whole_stream(Editor& editor) {
  select_whole_stream(editor);
  PauseDialog dialog(editor);
  dialog.begin();
  if (!dialog.accept()) return false;
  drive(dialog);
  return !dialog.has_broken_off;
}

bool cue_by_clock(Editor& editor) {
  AutoCueDialog dialog(editor);
  dialog.begin();
  return dialog.accept() && dialog.result != Result::refused;
}

}  // namespace corvelin
