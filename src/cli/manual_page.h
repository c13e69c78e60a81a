// SPDX-License-Identifier: GPL-2.0-or-later
// The page of corvelin-cli for `man`, made from the tables that do the work.
#pragma once

namespace corvelin {

/// In the language of man's formatter.
void print_manual_page();

}  // namespace corvelin
