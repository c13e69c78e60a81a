// SPDX-License-Identifier: GPL-2.0-or-later
// Splitting of edit lines.
#include "cli/words.h"

#include <fmt/format.h>

#include <utility>

#include "cli/messages.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

std::optional<std::vector<std::string>> split_words(std::string_view line) {
  std::vector<std::string> words;
  std::string word;
  bool in_word = false;
  bool in_quotes = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    const char c = line[at];
    if (in_quotes && c == '\\' && at + 1 < line.size() &&
        (line[at + 1] == '"' || line[at + 1] == '\\')) {
      word += line[++at];
    } else if (c == '"') {
      in_quotes = !in_quotes;
      in_word = true;
    } else if (in_quotes || !is_blank(c)) {
      if (!in_word && c == '#') break;
      word += c;
      in_word = true;
    } else if (in_word) {
      words.push_back(std::move(word));
      word.clear();
      in_word = false;
    }
  }
  if (in_quotes) return std::nullopt;
  if (in_word) words.push_back(std::move(word));
  return words;
}

std::u16string name_within(std::size_t limit, std::string_view word, std::string_view what) {
  std::u16string name = bytes_to_wide(word, true);
  if (name.size() > limit) complain(fmt::format("{} is cut to {} characters", what, limit));
  return cut_to_units(std::move(name), limit);
}

}  // namespace corvelin
