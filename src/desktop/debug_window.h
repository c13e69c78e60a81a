// SPDX-License-Identifier: GPL-2.0-or-later
// The debug window: the inner state in numbers, and the bit that the graph goes by. It stays open
// beside the main window.
#pragma once

#include "desktop/dialog_kit.h"

class QPlainTextEdit;

namespace corvelin {

struct Editor;

class DebugWindow : public DialogWindow {
 public:
  DebugWindow(Editor& editor, QWidget* parent);

 private:
  void show_report();

  Editor& editor_;
  QPlainTextEdit* report_;
};

}  // namespace corvelin
