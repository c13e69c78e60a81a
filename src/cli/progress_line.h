// SPDX-License-Identifier: GPL-2.0-or-later
// How far some work is: one line of standard error that is written again and again, only for a
// person who watches.
#pragma once

#include <unistd.h>

#include <chrono>
#include <string>

#include "cli/messages.h"
#include "platform/text/text.h"

namespace corvelin {

class ProgressLine {
 public:
  void show(const std::string& text) {
    if (!is_watched_) return;
    write_message("\r" + printable(on_one_line(text)) + "\033[K");
    is_shown_ = true;
  }

  /// Takes the line away, in whose place something else is told.
  void clear() {
    if (is_shown_) write_message("\r\033[K");
    is_shown_ = false;
  }

  /// Whether the time for another line has come: several a second are enough.
  bool is_due() {
    constexpr std::chrono::milliseconds pause(100);
    const auto now = std::chrono::steady_clock::now();
    if (!is_watched_ || now < next_) return false;
    next_ = now + pause;
    return true;
  }

  ~ProgressLine() {
    if (is_shown_) write_message("\n");
  }
  ProgressLine() = default;
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

 private:
  bool is_watched_ = ::isatty(STDERR_FILENO) != 0;
  bool is_shown_ = false;
  std::chrono::steady_clock::time_point next_;
};

}  // namespace corvelin
