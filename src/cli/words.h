// SPDX-License-Identifier: GPL-2.0-or-later
// An edit line as words: parted by blanks, text in double quotes with \" and \\, and a comment from
// a word that begins with "#" on.
#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace corvelin {

/// The words of a line; nothing when a quote is left open.
std::optional<std::vector<std::string>> split_words(std::string_view line);

/// A name of at most `limit` characters. That a longer one is cut is told, of "title" or whatever
/// it is.
std::u16string name_within(std::size_t limit, std::string_view word, std::string_view what);

/// A word that is a whole number which the type can hold.
template <typename Number>
std::optional<Number> parse_whole(std::string_view word) {
  Number value = 0;
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, value);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

}  // namespace corvelin
