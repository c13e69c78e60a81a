// SPDX-License-Identifier: GPL-2.0-or-later
// From a file name to an open document, by whichever reader the kind of the file asks for.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "model/document.h"
#include "model/selection.h"
#include "opening/append.h"
#include "opening/open_state.h"

namespace corvelin {

/// Closes whatever is open and opens the first of the files in its place, each by its extension;
/// the others are appended until one fails. Playlists stand for their files. A failure has been
/// shown, but for that of an MP4 file without a program in the settings that reads it; nothing is
/// open when the first one failed.
Joined open_documents(Document& document, Selection& selection, OpenState& open_state,
                      std::span<const std::string> names);

/// `names` with the files of each playlist in its place. Empty when one can't be read, which has
/// been shown, and when the user doesn't want the MP4 files of one extracted.
std::vector<std::string> without_playlists(std::span<const std::string> names);

/// Appends files, none of them a playlist, until one fails, which has been told. What is appended
/// of an MP4 file is its extracted track.
Joined append_documents(Document& document, std::span<const std::string> files);

}  // namespace corvelin
