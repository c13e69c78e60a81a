// SPDX-License-Identifier: GPL-2.0-or-later
// Recording without a window: the program waits for the end of the recording, and takes signals in
// the place of buttons.
#pragma once

#include <string>

namespace corvelin {

struct Editor;

/// Records into `path`, or by the settings with an empty one, until the time limit, Ctrl+C or
/// SIGTERM. SIGUSR1 sets a cue, SIGUSR2 tells the status. What was recorded is then the document,
/// and its cues are in a project beside it.
///
/// False when something failed, which has been told. There may be a document all the same.
bool record_unattended(Editor& editor, const std::string& path);

}  // namespace corvelin
