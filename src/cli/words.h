// An edit line as words: parted by blanks, text in double quotes with \" and \\, and a comment from
// a word that begins with "#" on.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

/// The words of a line; nothing when a quote is left open.
std::optional<std::vector<std::string>> split_words(std::string_view line);

}  // namespace corvelin
