// SPDX-License-Identifier: GPL-2.0-or-later
// What the program knows, printed for whoever writes lines for it: the edit lines and commands, the
// settings, the letters of name patterns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

/// The edit lines and commands, with a line of help each.
void print_commands();

/// The settings: the values that they take, default and meaning.
void print_keys();

/// The letters of the setting `split_pattern`.
void print_pattern();

/// The help of one edit line or command, in a line of text; empty for another word.
std::string help_for(std::string_view word);

/// The names of all edit lines and commands.
std::vector<std::string_view> known_lines();

/// What the program ends with.
extern const std::string_view exit_statuses;

/// Calls of the program for common jobs, a line each.
extern const std::string_view example_lines;

}  // namespace corvelin
