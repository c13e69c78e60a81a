// SPDX-License-Identifier: GPL-2.0-or-later
// What `--info` and `--frames` print.
#pragma once

#include <string>

#include "model/document.h"

namespace corvelin {

struct Editor;

/// The summary of the open stream and its parts, in lines.
std::string stream_summary(const Editor& editor);

/// Prints a line a frame of the edited stream to standard output: position, file index, file
/// offset, length, bitrate (kbit/s) and gain (steps), parted by blanks. Leaves the document as it
/// was.
void print_frames(const Document& document);

}  // namespace corvelin
