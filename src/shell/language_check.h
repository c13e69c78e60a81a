// SPDX-License-Identifier: GPL-2.0-or-later
// What a translator still has to do on a language file: it is held against the program's own table
// of English texts and its menus.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvelin {

/// The faults of a language file's text, each a line for its translator: rows that are missing or
/// unknown, lines that mean nothing, specifiers and keys that differ from the English row, and
/// letters that reach two entries of one menu. Leaves the table in English.
std::vector<std::string> check_language(std::string_view text);

}  // namespace corvelin
