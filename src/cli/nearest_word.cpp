// SPDX-License-Identifier: GPL-2.0-or-later
// Distance of words.
#include "cli/nearest_word.h"

#include <algorithm>
#include <vector>

namespace corvelin {

namespace {

// The optimal string alignment distance, row by row.
std::size_t distance_between(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> above(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) above[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t changed = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, changed});
      const bool is_swap = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (is_swap) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before = above;
    above.swap(row);
  }
  return above.back();
}

}  // namespace

std::string did_you_mean(std::string_view word, std::span<const std::string_view> known) {
  constexpr std::size_t longest = 64;   // what is longer is no mistyped word
  constexpr std::size_t beginning = 3;  // letters that tell a word
  if (word.size() > longest) return {};
  std::string_view nearest;
  std::size_t least = word.size() / 3 + 2;  // as far as a word may be
  for (const std::string_view candidate : known) {
    const bool goes_on = word.size() >= beginning && candidate.starts_with(word);
    const std::size_t distance = goes_on ? 1 : distance_between(word, candidate);
    if (distance >= least) continue;
    least = distance;
    nearest = candidate;
  }
  return nearest.empty() ? std::string() : "; did you mean " + std::string(nearest) + "?";
}

}  // namespace corvelin
