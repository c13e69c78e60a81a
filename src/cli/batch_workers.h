// SPDX-License-Identifier: GPL-2.0-or-later
// Processes of this program's own that each work on one file of a batch, several at a time. What
// they do is what one process does with one file after the other.
#pragma once

#include <functional>
#include <vector>

#include "unattended/batch_run.h"

namespace corvelin {

struct BatchListener {
  /// Gets each result.
  std::function<void(const BatchResult& result)> tell;
  bool in_order = true;  // of the list, or else as they come

  /// Is asked in front of each write, if it is there. Once it says no no other file is begun.
  BatchStartHook before_writing;
};

/// Works on the selected files of a job whose files stand alone. An interruption lets those under
/// way end and begins no other.
std::vector<BatchResult> work_side_by_side(const BatchJob& job, unsigned workers,
                                           const BatchListener& listener);

}  // namespace corvelin
