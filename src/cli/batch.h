// SPDX-License-Identifier: GPL-2.0-or-later
// A batch without a window: a line a file, and the table of results.
#pragma once

#include <cstdint>
#include <string>

#include "unattended/batch_job.h"

namespace corvelin {

/// How a batch tells what became of its files.
enum class BatchReport : std::uint8_t {
  table,       // a line a file in the order of the list, and the table at the end
  json,        // one object at the end
  json_lines,  // a record: an object a line, each as soon as something is known
};

struct BatchRequest {
  BatchJob job;              // without its files
  std::string list;          // the file that names them, "-" for standard input; empty: a folder
  char list_end = '\n';      // what each name of the list ends with
  std::string earlier_runs;  // their records: what is done already is left out; empty: none
  unsigned jobs = 0;         // files at a time; 0: as many as there are cores
  BatchReport report = BatchReport::table;
};

/// Works on the files of a folder or a list, so many at a time, each in a process of its own, and
/// tells on standard output what became of them. False when any of them failed.
bool run_batch(BatchRequest request);

}  // namespace corvelin
