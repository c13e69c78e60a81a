// SPDX-License-Identifier: GPL-2.0-or-later
// The system's wish that the program ends, by a signal or at the end of the session.
#pragma once

#include <functional>

class QObject;

namespace corvelin {

/// Calls `ask` in the main loop when the first SIGTERM, SIGINT or SIGHUP arrives. A further one
/// ends the process at once.
void watch_end_signals(QObject& owner, std::function<void()> ask);

/// The signal that arrived, or 0.
int end_signal();

/// The user goes on in spite of the signal, so that the next one is the first again.
void forget_end_signal();

}  // namespace corvelin
