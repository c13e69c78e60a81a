// Reading of scripts.
#include "cli/script.h"

#include "platform/system_calls.h"
#include "platform/text.h"

namespace corvelin {

namespace {

constexpr std::size_t longest_line = std::size_t{1} << 20;  // bytes

}  // namespace

void Script::Close::operator()(std::FILE* file) const {
  if (file != stdin) std::fclose(file);
}

std::error_code Script::open(const std::string& path) {
  file_.reset(path == "-" ? stdin : std::fopen(path.c_str(), "rbe"));
  number_ = 0;
  error_ = file_ ? std::error_code{} : last_error();
  return error_;
}

Script::Read Script::next(std::string& line) {
  line.clear();
  int c = ::getc_unlocked(file_.get());
  while (is_inside_line_ && c != EOF) {  // the rest of the one that was too long
    is_inside_line_ = c != '\n';
    c = ::getc_unlocked(file_.get());
  }
  if (c == EOF) {
    if (std::ferror(file_.get()) != 0) error_ = last_error();
    return Read::end;
  }
  ++number_;
  for (; c != EOF && c != '\n'; c = ::getc_unlocked(file_.get())) {
    line += static_cast<char>(c);
    is_inside_line_ = line.size() > longest_line;
    if (is_inside_line_) return Read::too_long;
  }
  if (number_ == 1 && line.starts_with(utf8_mark)) line.erase(0, utf8_mark.size());
  return Read::line;
}

}  // namespace corvelin
