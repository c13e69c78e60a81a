// SPDX-License-Identifier: GPL-2.0-or-later
// Numbers as the user reads them, and as a calculation leaves them.
#pragma once

#include <cstdint>
#include <string>

namespace corvelin {

/// The value in decimal with blanks between groups of three digits, as in "1 234 567".
std::string group_thousands(std::uint64_t value);

/// `value` without its fraction, kept between 0 and `limit`; 0 for what is no number.
///
/// Rates and counts come from files that may lie, so that a quotient of them can be anything.
std::uint32_t whole_part(double value, std::uint32_t limit = 0xFFFFFFFF);

/// How far a run of `whole` is with `part` of it, 0 to 100; 100 when there is nothing to do.
int percent_of(std::uint64_t part, std::uint64_t whole);

}  // namespace corvelin
