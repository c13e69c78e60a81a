// Playlists ("*.m3u", "*.m3u8"): one name of a file a line. Only read; a list makes a document of
// its files, one after the other.
#pragma once

#include <string>

namespace corvelin {

/// Reads a list, in UTF-8 if its name ends in "8", else in the ANSI code page. The first file is
/// opened, whatever kind it is, and the others are appended until one fails. A list in the list
/// that names no files is passed over.
///
/// False when the list can't be read, which is silent, and when its first file doesn't open or it
/// names none, which is told. No document is left then.
bool read_playlist(const std::string& list);

}  // namespace corvelin
