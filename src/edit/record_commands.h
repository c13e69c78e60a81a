// SPDX-License-Identifier: GPL-2.0-or-later
// The commands of recording: they arm the recorder, start and end its file, set cues in it, and
// open what was recorded as the document.
#pragma once

#include <string>

namespace corvelin {

struct Editor;

/// Closes the document, after the question about unsaved changes, and makes the recorder ready.
/// False when it is refused or fails, which the user has been told.
bool initialize_recording(Editor& editor);

/// The same for a recording that waits for a sound, this once.
bool level_activated_recording(Editor& editor);

/// Begins to write; the recorder is armed. A file of that name is replaced only if the user wants
/// that. False, and nothing is armed any more, when the file can't be made.
bool start_recording(Editor& editor);

/// The same when nobody is there to be asked: into `path`, whose extension becomes .mp3, or by the
/// settings with an empty one. Where something has the name the next free one is taken, and told.
bool start_recording_unattended(Editor& editor, const std::string& path);

/// Ends the recording and, when something was written, opens it with its cues. The cues of earlier
/// files, that it went on from, go to projects beside these.
void stop_recording(Editor& editor);

/// Writes a project beside the recording that is open, under a name that is free. Its name, or an
/// empty text when that failed, which the user has been told.
std::string keep_recording_project(Editor& editor);

/// Sets a cue at the end of what is recorded by now.
void add_recording_cue(Editor& editor);

/// Opens the file of the last recording as the document, with its cues. False when that fails,
/// which the user has been told.
bool open_recording(Editor& editor);

}  // namespace corvelin
