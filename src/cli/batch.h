// A batch without a window: a line a file, and the table of results.
#pragma once

#include "unattended/batch_job.h"

namespace corvelin {

/// Works on the files of the job's folder, so many at a time, each in a process of its own, and
/// tells what became of them on standard output: a line a file as it comes and a table at the end,
/// or one line of JSON. False when any of them failed.
bool run_batch(BatchJob job, unsigned jobs, bool prints_json);

}  // namespace corvelin
