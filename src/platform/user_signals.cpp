// SPDX-License-Identifier: GPL-2.0-or-later
// The two signals, remembered.
#include "platform/user_signals.h"

#include <csignal>

namespace corvelin {

namespace {

volatile std::sig_atomic_t first_came = 0;
volatile std::sig_atomic_t second_came = 0;

void remember(int signal) { (signal == SIGUSR1 ? first_came : second_came) = 1; }

}  // namespace

void catch_user_signals() {
  struct sigaction action = {};
  action.sa_handler = remember;
  ::sigemptyset(&action.sa_mask);
  ::sigaction(SIGUSR1, &action, nullptr);
  ::sigaction(SIGUSR2, &action, nullptr);
}

bool take_user_signal(int signal) {
  volatile std::sig_atomic_t& came = signal == SIGUSR1 ? first_came : second_came;
  if (came == 0) return false;
  came = 0;
  return true;
}

}  // namespace corvelin
