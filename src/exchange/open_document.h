// SPDX-License-Identifier: GPL-2.0-or-later
// From a file name to an open document, by whichever reader the kind of the file asks for.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "document/append.h"

namespace corvelin {

/// Opens a file by its extension. The document before it has been closed. Shows a box when that
/// fails, but for an MP4 file without a program in the settings that reads it. True also when only
/// some of the files of a playlist were opened, which has been shown.
bool open_document(const std::string& name);

/// Closes whatever is open, without a question, and opens `path` in its place. A failure has been
/// shown and leaves no document.
bool open_in_place(const std::string& path);

/// The same with several files: the first is opened, the others are appended until one fails.
/// Playlists stand for their files.
Joined open_files(std::span<const std::string> names);

/// `names` with the files of each playlist in its place. Empty when one can't be read, which has
/// been shown, and when the user doesn't want the MP4 files of one extracted.
std::vector<std::string> without_playlists(std::span<const std::string> names);

/// Appends files, none of them a playlist, until one fails, which has been told. What is appended
/// of an MP4 file is its extracted track.
Joined append_documents(std::span<const std::string> files);

}  // namespace corvelin
