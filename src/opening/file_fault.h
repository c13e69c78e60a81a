// SPDX-License-Identifier: GPL-2.0-or-later
// Why a file doesn't open, in words for the user: what the system says, or what the file is by its
// first bytes.
#pragma once

#include <string>

namespace corvelin {

/// Why a document didn't open; without a cause it did.
struct OpenFault {
  std::string audio;  // the file that is to blame, where it is one that the document names
  std::string cause;
};

/// What keeps anybody from reading the file: it isn't there, is a folder, is empty, … Empty when
/// nothing does.
std::string reading_fault(const std::string& path);

/// What keeps a file that was not opened from being audio of ours. Never empty.
std::string audio_fault(const std::string& path);

}  // namespace corvelin
