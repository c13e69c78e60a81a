// SPDX-License-Identifier: GPL-2.0-or-later
// Dragging: a level or a border follows the mouse, and all of it is one undo step. Whoever has the
// mouse says what was taken, where it is now, and that it was let go.
#pragma once

#include <cstdint>

#include "model/document.h"

namespace corvelin {

struct Editor;

/// The graph was pointed at: the part there is the current one, unless something plays.
void point_at(Editor& editor, EditPosition pos);

/// The handle of a level was taken: the undo step. Nothing, and false, where the stream has no
/// levels.
bool take_level(Editor& editor);

/// Gives the border in front of the part `index` a level, in gain steps; `part_count()` stands for
/// the stream's end.
void drag_level(Editor& editor, PartIndex index, std::int16_t gain);

/// It is let go: cues beside it go, as for a level that was set with keys.
void drop_level(Editor& editor, PartIndex index);

/// The same with the border in front of a part, which moves over the material that both sides of it
/// have.
void take_border(Editor& editor);
void drag_border(Editor& editor, PartIndex index, EditPosition pos);
void drop_border(Editor& editor);

}  // namespace corvelin
