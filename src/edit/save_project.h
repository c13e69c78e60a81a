// SPDX-License-Identifier: GPL-2.0-or-later
// The commands around a project: saving it, or a cue sheet in its place, and the question that
// guards unsaved changes.
#pragma once

namespace corvelin {

struct Editor;

/// Saves the document as a project or as a cue sheet, as the extension of its name says. The name
/// is asked for when there is none yet, or with `force_dialog`. With `as_cue` it becomes that of a
/// sheet. False when no name was given, and after a failure, which has been shown. True also when
/// the user thought better of a sheet that would not fit its audio.
bool save_project(Editor& editor, bool force_dialog, bool as_cue);

// The commands.
bool save_project_or_sheet(Editor& editor);
bool save_project_as(Editor& editor);

/// Whether the document may be dropped: at once when nothing is unsaved, else as the user answers.
bool confirm_discard_changes(Editor& editor);

}  // namespace corvelin
