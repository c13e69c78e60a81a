// SPDX-License-Identifier: GPL-2.0-or-later
// The clipboard of a run without a desktop: a text in a file that other runs can read and replace.
// It belongs to the user and is gone with the session. Commands reach it through the host.
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

enum class ClipboardContent {
  text,
  no_text,      // empty, or something else than text
  unavailable,  // the clipboard can't be opened now
  unreadable,   // there is a text, but it can't be fetched
};

/// What the program's own texts begin with. No other text that stands in the file is replaced: a
/// name that was given by mistake must cost nobody a recording.
constexpr std::string_view clipboard_mark = "[corvlparts]";

/// Puts `text` in the place of what the clipboard holds; an empty one empties it. False when that
/// fails: the old content stays then.
bool write_clipboard_file(std::string_view text);

/// Fetches the text. `text` is untouched unless that is the answer.
ClipboardContent read_clipboard_file(std::string& text);

/// The file that is the clipboard; empty for the one in `runtime_folder()`.
extern std::string clipboard_file;

}  // namespace corvelin
