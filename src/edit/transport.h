// SPDX-License-Identifier: GPL-2.0-or-later
// The commands that play, start a recording that is armed, and stop. A play begins a moment after
// its command, from the event loop.
#pragma once

#include "audio/playback.h"
#include "edit/outcome.h"

namespace corvelin {

struct Editor;

/// Plays from the cursor, or has an armed recording begin to write. Nothing while something plays
/// or is written, and at the end of the stream.
Result play(Editor& editor);

/// Plays a stretch at the selection, or the selection as a loop. While something plays, the two
/// stretches at the end of the selection stand for a slower and a faster play, and the others for
/// nothing.
Result request_prelisten(Editor& editor, PrelistenMode mode);

/// Stops what plays or is about to.
void stop_playing(Editor& editor);

/// The same, and the device is let go: the document changes from under what plays.
void fall_silent(Editor& editor);

/// Stops that, or a recording.
void stop(Editor& editor);

/// What the one key for both does.
Result play_or_stop(Editor& editor);

}  // namespace corvelin
