// SPDX-License-Identifier: GPL-2.0-or-later
// Number formats and limits.
#include "platform/text/numbers.h"

namespace corvelin {

std::string group_thousands(std::uint64_t value) {
  std::string text = std::to_string(value);
  for (std::size_t end = text.size(); end > 3; end -= 3) text.insert(end - 3, 1, ' ');
  return text;
}

std::uint32_t whole_part(double value, std::uint32_t limit) {
  if (!(value > 0)) return 0;
  return value < limit ? static_cast<std::uint32_t>(value) : limit;
}

int percent_of(std::uint64_t part, std::uint64_t whole) {
  return part >= whole ? 100 : static_cast<int>(part * 100 / whole);
}

}  // namespace corvelin
