// SPDX-License-Identifier: GPL-2.0-or-later
// The user's wish, from outside, that the program ends: Ctrl+C, SIGTERM, or a terminal that is
// closed. Work is not cut off in the middle: whoever steps a long run looks here between two steps
// and cancels it.
#pragma once

namespace corvelin {

/// Has the first of these signals remembered. A second one ends the program at once, in case it
/// hangs.
void catch_interruptions();

/// The signal that came, or 0.
int interruption();

/// The same, and forgets it, for work that such a signal ends in the proper way.
int take_interruption();

}  // namespace corvelin
