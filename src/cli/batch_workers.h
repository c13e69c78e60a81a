// Processes of this program's own that each work on one file of a batch, several at a time. What
// they do is what one process does with one file after the other.
#pragma once

#include <functional>
#include <vector>

#include "unattended/batch_run.h"

namespace corvelin {

/// Works on the selected files of a job whose files stand alone. `tell` gets each result, in the
/// order of the list. An interruption lets those under way end and begins no other.
std::vector<BatchResult> work_side_by_side(
    const BatchJob& job, unsigned workers,
    const std::function<void(const BatchResult& result)>& tell);

}  // namespace corvelin
