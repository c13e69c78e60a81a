// SPDX-License-Identifier: GPL-2.0-or-later
// What the program calls itself.
#pragma once

#include <string_view>

namespace corvelin {

constexpr std::string_view program_name = "Corvelin";
extern const std::string_view program_version;  // as the build files tell it
constexpr std::string_view program_notice = "Free software under the GNU General Public License";

}  // namespace corvelin
