// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that have nothing to do with a document: other windows of the program, its pages of
// help, what it says of itself, and the way into the fields of the status.
#pragma once

#include <string>

#include "edit/outcome.h"
#include "platform/host.h"

namespace corvelin {

// Into the fields of the status.
void focus_now_field();
void focus_selection_field();

void debug_window();

/// Starts the program once more.
Outcome new_window();

/// Open the program's pages in the user's viewer.
Outcome manual();
Outcome faq();

/// What the program says of itself: version, translation, changes, license.
struct AboutDialog : Dialog {
  std::string text;

  void begin() override;
  bool accept() override { return true; }
};

}  // namespace corvelin
