// SPDX-License-Identifier: GPL-2.0-or-later
// Signals through a pipe into the event loop.
#include "desktop/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <utility>

namespace corvelin {

namespace {

volatile std::sig_atomic_t arrived = 0;
int pipe_ends[2] = {-1, -1};

extern "C" void note_signal(int signal) {
  if (arrived != 0) ::_exit(128 + signal);
  arrived = signal;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = ::write(pipe_ends[1], &byte, 1);
}

}  // namespace

void watch_end_signals(QObject& owner, std::function<void()> ask) {
  if (::pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* const notifier = new QSocketNotifier(pipe_ends[0], QSocketNotifier::Read, &owner);
  QObject::connect(notifier, &QSocketNotifier::activated, &owner, [ask = std::move(ask)] {
    std::array<char, 16> bytes = {};
    if (::read(pipe_ends[0], bytes.data(), bytes.size()) > 0) ask();
  });
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) std::signal(signal, note_signal);
}

int end_signal() { return arrived; }

void forget_end_signal() { arrived = 0; }

}  // namespace corvelin
