// Playlists ("*.m3u", "*.m3u8"). Only read: a list stands for the files that it names.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "document/file_fault.h"

namespace corvelin {

/// Adds `names` to `files`, each list among them as the files that it and the lists in it name. A
/// list is in UTF-8 if its name ends in "8", else in the ANSI code page. Blank lines and those that
/// begin with "#" name nothing.
///
/// A fault when a list can't be read, when lists name each other, and when there is no file in the
/// end.
OpenFault expand_playlists(std::span<const std::string> names, std::vector<std::string>& files);

}  // namespace corvelin
