// SPDX-License-Identifier: GPL-2.0-or-later
// The language of groff's macros for manual pages: man(7) and groff_char(7).
#include "text/man_page.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/processes/program.h"

namespace corvelin {

namespace {

// Text as the formatter shows it unchanged: it takes a bare hyphen for one between syllables,
// quotes for those of print, and a dot or quote at the start of a line for a request.
std::string escaped(std::string_view text) {
  std::string result;
  bool starts_line = true;
  for (const char character : text) {
    if (starts_line && (character == '.' || character == '\'')) result += R"(\&)";
    starts_line = character == '\n';
    switch (character) {
      case '\\':
        result += R"(\[rs])";
        break;
      case '-':
        result += R"(\-)";
        break;
      case '\'':
        result += R"(\[aq])";
        break;
      case '"':
        result += R"(\[dq])";
        break;
      case '`':
        result += R"(\[ga])";
        break;
      case '^':
        result += R"(\[ha])";
        break;
      case '~':
        result += R"(\[ti])";
        break;
      default:
        result += character;
    }
  }
  return result;
}

}  // namespace

ManPage::ManPage(std::string_view program, std::string_view purpose, std::string_view words) {
  std::string title(program);
  std::ranges::transform(title, title.begin(), [](char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
  });
  page_ = fmt::format(".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n", escaped(title), program_name,
                      program_version);
  section("NAME");
  page_ += fmt::format("{} \\- {}\n", escaped(program), escaped(purpose));
  section("SYNOPSIS");
  page_ += fmt::format(".B {}\n{}\n", escaped(program), escaped(words));
}

void ManPage::section(std::string_view title) { page_ += fmt::format(".SH {}\n", escaped(title)); }

void ManPage::paragraph(std::string_view text) { page_ += fmt::format(".PP\n{}\n", escaped(text)); }

void ManPage::entry(std::string_view term, std::string_view text) {
  page_ += fmt::format(".TP\n.B {}\n", escaped(term));
  while (true) {
    const std::size_t line_end = text.find('\n');
    page_ += escaped(text.substr(0, line_end)) + "\n";
    if (line_end == std::string_view::npos) return;
    page_ += ".br\n";
    text.remove_prefix(line_end + 1);
  }
}

void ManPage::example(std::string_view lines) {
  page_ += fmt::format(".PP\n.EX\n{}.EE\n", escaped(lines));
}

}  // namespace corvelin
