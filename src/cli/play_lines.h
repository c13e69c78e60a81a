// SPDX-License-Identifier: GPL-2.0-or-later
// Playing without a window: the program waits until all was heard.
#pragma once

#include "cli/edit_line.h"

namespace corvelin {

struct Editor;

/// Waits for the end of what a line or a command has set to play, if it has; Ctrl+C stops it. Tells
/// why it was not heard to its end, other than by the user.
Refusal wait_for_play(Editor& editor);

}  // namespace corvelin
