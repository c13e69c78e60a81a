// SPDX-License-Identifier: GPL-2.0-or-later
// What dialogs and the work of the command line do when nobody is there: they press their own
// buttons, with the settings as they stand.
#pragma once

#include "edit/auto_cue_dialog.h"
#include "edit/normalize_dialog.h"
#include "edit/pause_dialog.h"

namespace corvelin {

struct Editor;

/// Carry out a dialog that has begun. False when it was refused, or had nothing to do.
bool run_unattended(NormalizeDialog& dialog);
bool run_unattended(PauseDialog& dialog);
bool run_unattended(AutoCueDialog& dialog);

/// Normalizes the whole stream, whose level can be changed. False when it already is the highest.
bool normalize_whole_stream(Editor& editor);

/// Sets cues at the pauses of the whole stream. False when it can't be decoded, or has more pauses
/// than parts are possible.
bool cue_pauses_of_whole_stream(Editor& editor);

/// Sets cues by the clock. False for an interval that is none, or sets more cues than parts are
/// possible.
bool cue_by_clock(Editor& editor);

}  // namespace corvelin
