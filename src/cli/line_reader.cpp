// SPDX-License-Identifier: GPL-2.0-or-later
// Reading of lines.
#include "cli/line_reader.h"

#include "platform/files/system_calls.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

constexpr std::size_t longest_line = std::size_t{1} << 20;  // bytes

}  // namespace

void LineReader::Close::operator()(std::FILE* file) const {
  if (file != stdin) std::fclose(file);
}

std::error_code LineReader::open(const std::string& path, char line_end) {
  line_end_ = static_cast<unsigned char>(line_end);
  file_.reset(path == "-" ? stdin : std::fopen(path.c_str(), "rbe"));
  number_ = 0;
  error_ = file_ ? std::error_code{} : last_error();
  return error_;
}

LineReader::Read LineReader::next(std::string& line) {
  line.clear();
  int c = ::getc_unlocked(file_.get());
  while (is_inside_line_ && c != EOF) {  // the rest of the one that was too long
    is_inside_line_ = c != line_end_;
    c = ::getc_unlocked(file_.get());
  }
  if (c == EOF) {
    if (std::ferror(file_.get()) != 0) error_ = last_error();
    return Read::end;
  }
  ++number_;
  for (; c != EOF && c != line_end_; c = ::getc_unlocked(file_.get())) {
    line += static_cast<char>(c);
    is_inside_line_ = line.size() > longest_line;
    if (is_inside_line_) return Read::too_long;
  }
  is_ended_ = c != EOF;
  if (number_ == 1 && line.starts_with(utf8_mark)) line.erase(0, utf8_mark.size());
  return Read::line;
}

}  // namespace corvelin
