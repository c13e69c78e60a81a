// SPDX-License-Identifier: GPL-2.0-or-later
// What a level that was set by hand, with keys or by dragging its handle, means for the cues beside
// it.
#pragma once

#include "model/document.h"

namespace corvelin {

struct Editor;

/// A border with a level is no track's start, and neither are the ones before and behind it: clears
/// their cue flags. `index` is the part that begins at the border, `part_count()` for the stream's
/// end, where only the last part's flag goes.
void clear_cues_round_level(Editor& editor, PartIndex index);

}  // namespace corvelin
