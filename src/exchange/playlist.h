// SPDX-License-Identifier: GPL-2.0-or-later
// Playlists ("*.m3u", "*.m3u8"). Only read: a list stands for the files that it names.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "opening/file_fault.h"

namespace corvelin {

struct ExpandedLists {
  std::vector<std::string> files;
  std::vector<std::string> with_mp4;  // the lists that name MP4 files
  OpenFault fault;
};

/// `names`, each list among them as the files that it and the lists in it name. A list is in UTF-8
/// if its name ends in "8", else in the ANSI code page. Blank lines and those that begin with "#"
/// name nothing.
///
/// A fault when a list can't be read, when lists name each other, and when there is no file in the
/// end; also, where a program extracts the tracks of MP4 files, when a list names one that lies
/// elsewhere: the track would be written into a folder that the user has not chosen.
ExpandedLists expand_playlists(std::span<const std::string> names);

}  // namespace corvelin
