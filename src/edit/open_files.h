// SPDX-License-Identifier: GPL-2.0-or-later
// Opening and closing of the document, with all that lives beside it: what plays, and the steps
// that can be taken back.
#pragma once

#include <span>
#include <string>

#include "opening/append.h"

namespace corvelin {

struct Editor;

/// Closes the document, without a question. What plays stops, and there is no step to take back.
void close_all(Editor& editor);

/// Closes it and opens files in its place: the first is opened, the others are appended until one
/// fails, which has been shown. Playlists stand for their files.
Joined open_files(Editor& editor, std::span<const std::string> names);

/// The same with one file. True also when only some of the files of a playlist were opened.
bool open_file(Editor& editor, const std::string& path);

}  // namespace corvelin
