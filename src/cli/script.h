// The lines of a script, read one after the other in bounded memory.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

namespace corvelin {

class Script {
 public:
  /// "-" stands for standard input.
  std::error_code open(const std::string& path);

  enum class Read { line, too_long, end };

  /// The next line, without its end. Of a line of more than a mebibyte only the begin is there, and
  /// the next call passes over the rest. `end` is also the answer to a failure, which `error`
  /// tells.
  Read next(std::string& line);

  /// Of the last line that was read, from 1.
  [[nodiscard]] int number() const { return number_; }
  [[nodiscard]] std::error_code error() const { return error_; }

 private:
  struct Close {
    void operator()(std::FILE* file) const;
  };
  std::unique_ptr<std::FILE, Close> file_;
  int number_ = 0;
  bool is_inside_line_ = false;
  std::error_code error_;
};

}  // namespace corvelin
