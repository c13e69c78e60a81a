// SPDX-License-Identifier: GPL-2.0-or-later
// The record of a batch as JSON Lines: what became of each file, what was about to be done to it,
// and, of earlier runs, what a run need not do again. docs/batch-record.md tells the form.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>

#include "unattended/batch_run.h"

namespace corvelin {

/// The lines, with their ends. `folder` stands in front of the names of the files.
std::string record_line(const BatchResult& result, const std::string& folder);
std::string record_line(const BatchStart& start, const std::string& folder);

/// What the records of earlier runs tell.
class EarlierRuns {
 public:
  /// Reads a record, of one run or of several put together. A line that is not whole is left out.
  std::error_code read(const std::string& path);

  /// Whether the record ends within a line.
  [[nodiscard]] bool ends_in_line() const { return ends_in_line_; }

  struct Answer {
    bool is_done = false;

    /// Whether that is told by the file, and not by a result: a run was ended when it had replaced
    /// it, or another program has written to it.
    bool is_by_change = false;
    std::string begun_target;  // of a file that is to be done again; empty: nothing was begun
  };

  /// What is known of a file, and is to be done with it. `name` is as in the record.
  [[nodiscard]] Answer ask(const std::string& name) const;

 private:
  struct Known {
    bool is_done = false;
    bool is_begun = false;
    std::string target;
    std::uint64_t size = 0;
    std::uint64_t inode = 0;
    std::string time;
  };

  void take(std::string_view text);

  std::unordered_map<std::string, Known> known_;
  bool ends_in_line_ = false;
};

}  // namespace corvelin
