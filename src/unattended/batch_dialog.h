// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog of the batch: the job that it shows, and what its buttons do to it and to the run.
#pragma once

#include <functional>
#include <memory>

#include "platform/host.h"
#include "unattended/batch_job.h"
#include "unattended/batch_run.h"

namespace corvelin {

struct Editor;

struct BatchDialog : Dialog {
  Editor& editor;
  BatchJob& job;                  // which outlives the dialog: the next one begins with its fields
  std::unique_ptr<BatchRun> run;  // the one under way, which a host steps, or the last one

  BatchDialog(Editor& opened_for, BatchJob& shown) : editor(opened_for), job(shown) {}

  /// What a host does while a file is worked on; whether the work shall go on.
  std::function<bool()> between_slices;

  void begin() override { job.begin(editor); }

  /// "Start". False when a field can't be taken, which is told, and when the user takes the warning
  /// about the originals seriously.
  bool accept() override;

  /// "Stop".
  void stop() const;

  /// "Close". What is under way is finished first: a host closes behind it.
  void cancel() override;

  /// A check box or a destination. One that changes what is done stops the run.
  void choose(BatchOption option, bool is_on);

  [[nodiscard]] bool is_running() const { return run && !run->is_over(); }
};

/// The dialog, in the place of the document.
bool batch_dialog(Editor& editor, BatchJob& job);

}  // namespace corvelin
