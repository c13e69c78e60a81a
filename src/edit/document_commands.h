// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that put another document in the place of the open one. Each asks first when that
// has unsaved changes, and has told why it was refused.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "opening/append.h"

namespace corvelin {

struct Editor;

bool open_by_dialog(Editor& editor);
bool close(Editor& editor);

/// The dialog for work on whole folders, in the place of the document.
bool batch(Editor& editor);

/// Opens an entry of the recent list. When that fails, all entries whose files are gone leave the
/// list.
bool open_recent(Editor& editor, std::size_t index);

/// Appends files in one undo step until one fails, and goes to the end of the stream. Playlists
/// stand for their files. When none could be appended there is no step and the cursor stays.
Joined append_in_one_step(Editor& editor, std::span<const std::string> names);

/// Asks for a cue sheet, which becomes the project of the document, and sets its cues in the audio
/// as it stands. False also when the user cancels; no project is named then.
bool load_cue_sheet_over_audio(Editor& editor);

/// Saves the cues as a sheet, hands it to the user's editor, and opens what became of it.
bool edit_cue_sheet(Editor& editor);

}  // namespace corvelin
