// SPDX-License-Identifier: GPL-2.0-or-later
// The windows of the dialogs' records. Each shows the fields of a record that has begun, writes
// what the user makes of them back into it, and carries it out by the record's own operations.
// True when `accept` took the fields and all that it started went well.
#pragma once

#include "edit/auto_cue_dialog.h"
#include "edit/config_dialog.h"
#include "edit/file_info_dialog.h"
#include "edit/language_dialog.h"
#include "edit/level_dialog.h"
#include "edit/names_dialog.h"
#include "edit/normalize_dialog.h"
#include "edit/pause_dialog.h"
#include "edit/speed_dialog.h"
#include "edit/split_dialog.h"
#include "edit/window_commands.h"
#include "unattended/batch_dialog.h"

class QWidget;

namespace corvelin {

bool show_window(NamesDialog& dialog, QWidget* parent);
bool show_window(FileInfoDialog& dialog, QWidget* parent);
bool show_window(SplitDialog& dialog, QWidget* parent);
bool show_window(LevelDialog& dialog, QWidget* parent);
bool show_window(NormalizeDialog& dialog, QWidget* parent);
bool show_window(PauseDialog& dialog, QWidget* parent);
bool show_window(AutoCueDialog& dialog, QWidget* parent);
bool show_window(SpeedDialog& dialog, QWidget* parent);
bool show_window(ConfigDialog& dialog, QWidget* parent);
bool show_window(LanguageDialog& dialog, QWidget* parent);
bool show_window(AboutDialog& dialog, QWidget* parent);
bool show_window(BatchDialog& dialog, QWidget* parent);

}  // namespace corvelin
