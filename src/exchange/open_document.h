// From a file name to an open document, by whichever reader the kind of the file asks for.
#pragma once

#include <string>

namespace corvelin {

/// Opens a file by its extension. The document before it has been closed. Shows a box when that
/// fails, but for an MP4 file without a program in the settings that reads it, and for a playlist
/// that can't be read.
bool open_document(const std::string& name);

/// Closes whatever is open, without a question, and opens `path` in its place. A failure has been
/// shown and leaves no document.
bool open_in_place(const std::string& path);

enum class OpenFailure { unreadable, unsupported_type };

/// Shows the box for a document that didn't open, with the names in `open_state`, and takes them
/// off the recent list. `audio_name` is empty then.
void report_open_failure(OpenFailure failure);

}  // namespace corvelin
