// Splitting of edit lines.
#include "cli/words.h"

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

}  // namespace corvelin
