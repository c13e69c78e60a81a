// SPDX-License-Identifier: GPL-2.0-or-later
// Saves and splits that ask for no name: what the switches of the command line do.
#pragma once

#include <string>

#include "edit/save_audio.h"

namespace corvelin {

struct Editor;

/// Saves in the place of the opened file with `overwrite`, else beside it: song.mp3 gives
/// song.mp3.mp3. A file that is in the way there is replaced only if the user wants that.
SaveOutcome save_unattended(Editor& editor, bool overwrite);

/// Splits without a question, with the settings as they stand, into `folder`, which is
/// made if it isn't there, or beside the audio with an empty one.
SaveOutcome split_unattended(Editor& editor, const std::string& folder);

}  // namespace corvelin
