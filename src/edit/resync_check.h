// SPDX-License-Identifier: GPL-2.0-or-later
// Check for re-syncs: finds the places where the stream's frames don't follow one another.
#pragma once

#include "edit/outcome.h"

namespace corvelin {

struct Editor;

/// Walks the frames of the selected range, or of the whole stream, marks each place where the
/// reader had to search for the next frame with a titled cue, and tells how many there are.
Outcome check_resyncs(Editor& editor);

}  // namespace corvelin
