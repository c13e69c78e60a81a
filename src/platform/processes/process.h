// SPDX-License-Identifier: GPL-2.0-or-later
// This program beside others: its priority, and the starting of others. They live on by themselves:
// nobody waits for them, and they end neither with this program nor by its terminal.
#pragma once

#include <string>
#include <system_error>
#include <vector>

namespace corvelin {

/// Starts the program `words[0]`, looked up on the user's path, with the other words as its
/// arguments. An error when it can't be started; how it fares then is not told.
std::error_code start_program(const std::vector<std::string>& words);

/// Whether a program of this name is found on the user's path.
bool has_program(const std::string& name);

/// Lets this program go before others, as far as the user may do that, or no longer.
void set_high_priority(bool on);

}  // namespace corvelin
