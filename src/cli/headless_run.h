// SPDX-License-Identifier: GPL-2.0-or-later
// One run of corvelin-cli from its command line to its exit status.
#pragma once

namespace corvelin {

/// 0: done; 1: the work failed; 2: wrong usage.
int run_headless(int argc, const char* const* argv);

}  // namespace corvelin
