// SPDX-License-Identifier: GPL-2.0-or-later
// SIGUSR1 and SIGUSR2: what a script asks of a program that runs. They are remembered, and the loop
// that serves them looks here.
#pragma once

namespace corvelin {

/// From now on the two don't end the program any more.
void catch_user_signals();

/// Whether the signal came since the last look.
bool take_user_signal(int signal);

}  // namespace corvelin
