// SPDX-License-Identifier: GPL-2.0-or-later
// The window of a long run: how far it is, what it has to say, and Cancel. It steps the run
// whenever no event waits, so that the window stays alive.
#pragma once

#include <QTimer>

#include "desktop/dialog_kit.h"
#include "platform/long_run.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;

namespace corvelin {

class RunWindow : public DialogWindow {
 public:
  /// With `batch_active` nobody is there to read what the run says at its end.
  RunWindow(LongRun& run, bool batch_active, QWidget* parent);

  void reject() override;

 private:
  void step();
  void show_progress();
  void end();
  void cancel();

  LongRun& run_;
  const bool batch_active_;
  QTimer timer_;
  QProgressBar* bar_;
  QLabel* progress_;
  QPlainTextEdit* log_;
  QCheckBox* closes_;
  QPushButton* button_;
  bool is_over_ = false;
  bool is_unwanted_ = false;
};

}  // namespace corvelin
