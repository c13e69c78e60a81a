// SPDX-License-Identifier: GPL-2.0-or-later
// A program that works for this one: started without a shell, waited for, and ended when it is not
// wanted any more. It reads nothing, what it prints goes where its caller says, or nowhere, and the
// end of what it complains about is kept.
#pragma once

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/files/file.h"

namespace corvelin {

class ChildProcess {
 public:
  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() { kill(); }

  /// Starts the program `words[0]`, looked up on the user's path, with the other words as its
  /// arguments, each as it stands. What it prints goes to the descriptor `output`, if that is one.
  /// An error when it can't be started.
  std::error_code start(const std::vector<std::string>& words, int output = -1);

  /// Waits up to so many milliseconds for the end. Returns whether the program still runs.
  bool wait(int milliseconds);

  /// Ends the program and what it has started at once, and waits until it is gone. Nothing when it
  /// has ended.
  void kill();

  /// Of a program that has ended: whether it says that all went well.
  [[nodiscard]] bool has_succeeded() const;

  /// The last lines of its standard error, at most 1000 bytes of them.
  [[nodiscard]] std::string_view complaints() const { return complaints_; }

 private:
  void take_complaints();
  void reap();

  int process_ = 0;  // 0 when none runs
  int status_ = 0;
  FileHandle errors_;
  std::string complaints_;
};

}  // namespace corvelin
