// SPDX-License-Identifier: GPL-2.0-or-later
// A page for `man`: sections of paragraphs, entries and examples, given as plain text. So the rows
// of the tables by which a program works are its page as well, and the page never tells of another
// one.
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

class ManPage {
 public:
  /// The head of the page: `program` with what it is in a line, and the words behind its name.
  ManPage(std::string_view program, std::string_view purpose, std::string_view words);

  void section(std::string_view title);
  void paragraph(std::string_view text);
  /// A term, and what it means below; lines of the text stay lines.
  void entry(std::string_view term, std::string_view text);
  /// Lines that stay as they stand, of letters of one width.
  void example(std::string_view lines);

  /// The page as the formatter reads it.
  [[nodiscard]] const std::string& text() const { return page_; }

 private:
  std::string page_;
};

}  // namespace corvelin
