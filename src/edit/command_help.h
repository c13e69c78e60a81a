// SPDX-License-Identifier: GPL-2.0-or-later
// A line of help for each command of the table, for somebody who types its name.
#pragma once

#include <string_view>

namespace corvelin {

/// Empty for a name that no command has.
std::string_view command_help(std::string_view name);

}  // namespace corvelin
