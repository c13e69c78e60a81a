// SPDX-License-Identifier: GPL-2.0-or-later
// One run of the desktop program from its command line to its exit status.
#pragma once

namespace corvelin {

struct Editor;

int run_desktop(Editor& editor, int argc, char** argv);

}  // namespace corvelin
