// SPDX-License-Identifier: GPL-2.0-or-later
// Control of the program from another computer: a small text file in the folder of the recordings
// brings one command in and the program's status out. The option `remote_control_on` turns it on.
//
// The file is only touched where it is a file of this form. A command is taken out of it before it
// is carried out, so that it acts once, and for one program of several that look.
#pragma once

#include <chrono>
#include <vector>

#include "platform/host.h"

namespace corvelin {

struct Editor;

constexpr std::chrono::seconds remote_scan_interval(30);

/// Carries out the command that stands in the file, and writes the file anew with the status; also
/// where there is none. While the program is busy a command waits. Returns the boxes that were not
/// shown: what they say is in the file.
std::vector<MessageBox> remote_scan(Editor& editor);

/// Whether a command stands in the file.
bool is_remote_command_there(const Editor& editor);

/// Has the file tell that the program is over.
void end_remote_control(const Editor& editor);

}  // namespace corvelin
