// SPDX-License-Identifier: GPL-2.0-or-later
// Signals, remembered.
#include "platform/processes/interruption.h"

#include <csignal>

namespace corvelin {

namespace {

volatile std::sig_atomic_t caught = 0;

void remember(int signal) { caught = signal; }

}  // namespace

// System calls that wait, as for a line of a script, are broken off: no SA_RESTART.
void catch_interruptions() {
  struct sigaction action = {};
  action.sa_handler = remember;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  ::sigemptyset(&action.sa_mask);
  ::sigaction(SIGINT, &action, nullptr);
  ::sigaction(SIGTERM, &action, nullptr);
  struct sigaction hang_up = {};
  ::sigaction(SIGHUP, nullptr, &hang_up);
  const bool outlives_terminal = hang_up.sa_handler == SIG_IGN;  // as nohup has it
  if (!outlives_terminal) ::sigaction(SIGHUP, &action, nullptr);
}

int interruption() { return caught; }

int take_interruption() {
  const int signal = caught;
  caught = 0;
  if (signal != 0) catch_interruptions();
  return signal;
}

}  // namespace corvelin
