// SPDX-License-Identifier: GPL-2.0-or-later
// The dialog "Auto cue": a cue at each multiple of an interval. Nothing is decoded for it.
#pragma once

#include <cstdint>
#include <string>

#include "edit/outcome.h"
#include "platform/host.h"

namespace corvelin {

struct Editor;

struct AutoCueDialog : Dialog {
  Editor& editor;

  explicit AutoCueDialog(Editor& opened_for) : editor(opened_for) {}

  std::string interval;  // "2:00": minutes and seconds
  std::string last_length;
  bool creates_names = false;
  Result result = Result::nothing;  // of the cues that `accept` set

  /// Takes the settings.
  void begin() override;

  /// Keeps the fields as settings and sets the cues. False, and the dialog stays open, for an
  /// interval that is none. An interval of 0 sets no cue, which is told.
  bool accept() override;
};

struct AutoCues {
  double interval = 0;     // seconds
  double last_length = 0;  // seconds that the last part has at least
  bool creates_names = false;
};

/// Sets the cues of the selection, or of the whole stream without one, behind an undo step.
/// `nothing` where no multiple lies in it; `refused` with a full part table, which the user has
/// been told: the cues up to there are set.
Result set_auto_cues(Editor& editor, const AutoCues& cues);

/// The dialog.
bool auto_cue_dialog(Editor& editor);

}  // namespace corvelin
