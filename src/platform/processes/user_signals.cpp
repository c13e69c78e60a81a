// SPDX-License-Identifier: GPL-2.0-or-later
// The two signals, remembered.
#include "platform/processes/user_signals.h"

#include <csignal>

namespace corvelin {

namespace {

volatile std::sig_atomic_t came[2] = {0, 0};

volatile std::sig_atomic_t& flag_of(int signal) { return came[signal == SIGUSR1 ? 0 : 1]; }

void remember(int signal) { flag_of(signal) = 1; }

}  // namespace

void catch_user_signals() {
  struct sigaction action = {};
  action.sa_handler = remember;
  ::sigemptyset(&action.sa_mask);
  ::sigaction(SIGUSR1, &action, nullptr);
  ::sigaction(SIGUSR2, &action, nullptr);
}

bool take_user_signal(int signal) {
  if (flag_of(signal) == 0) return false;
  flag_of(signal) = 0;
  return true;
}

}  // namespace corvelin
