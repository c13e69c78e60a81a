// SPDX-License-Identifier: GPL-2.0-or-later
// The lines of a script or a list, read one after the other in bounded memory.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

namespace corvelin {

class LineReader {
 public:
  /// "-" stands for standard input. `line_end` is what each line ends with, also the zero of a list
  /// of names.
  std::error_code open(const std::string& path, char line_end = '\n');

  enum class Read { line, too_long, end };

  /// The next line, without its end. Of a line of more than a mebibyte only the begin is there, and
  /// the next call passes over the rest. `end` is also the answer to a failure, which `error`
  /// tells.
  Read next(std::string& line);

  /// Whether the last line that was read had an end.
  [[nodiscard]] bool is_ended() const { return is_ended_; }

  /// Of the last line that was read, from 1.
  [[nodiscard]] int number() const { return number_; }
  [[nodiscard]] std::error_code error() const { return error_; }

 private:
  struct Close {
    void operator()(std::FILE* file) const;
  };
  std::unique_ptr<std::FILE, Close> file_;
  int line_end_ = '\n';
  int number_ = 0;
  bool is_inside_line_ = false;
  bool is_ended_ = true;
  std::error_code error_;
};

}  // namespace corvelin
