// The commands of recording: they arm the recorder, start and end its file, set cues in it, and
// open what was recorded as the document.
#pragma once

namespace corvelin {

/// Closes the document, after the question about unsaved changes, and makes the recorder ready.
/// False when it is refused or fails, which the user has been told.
bool initialize_recording();

/// The same for a recording that waits for a sound, this once.
bool level_activated_recording();

/// Begins to write; the recorder is armed. A file of that name is replaced only if the user wants
/// that; in a run without one the next free name is taken, and told. False, and nothing is armed
/// any more, when the file can't be made.
bool start_recording();

/// Ends the recording and, when something was written, opens it with its cues.
void stop_recording();

/// Sets a cue at the end of what is recorded by now.
void add_recording_cue();

/// Opens the file of the last recording as the document, with its cues. False when that fails,
/// which the user has been told.
bool open_recording();

}  // namespace corvelin
