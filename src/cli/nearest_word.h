// SPDX-License-Identifier: GPL-2.0-or-later
// What somebody may have meant by a word that nothing is called.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace corvelin {

/// "; did you mean WORD?" with the nearest of the known words: the one that takes the fewest
/// letters put in, left out, changed or swapped, or that goes on as `word` begins. Empty when none
/// is near.
std::string did_you_mean(std::string_view word, std::span<const std::string_view> known);

}  // namespace corvelin
