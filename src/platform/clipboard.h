// The clipboard: one text that other programs, and other runs of this one, can read and replace. A
// desktop fills in `clipboard_handler`; without one the clipboard is a file that belongs to the
// user and is gone with the session.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace corvelin {

enum class ClipboardContent {
  text,
  no_text,      // empty, or something else than text
  unavailable,  // the clipboard can't be opened now
  unreadable,   // there is a text, but it can't be fetched
};

/// Puts `text` in the place of what the clipboard holds; an empty one empties it. False when that
/// fails: the old content stays then.
bool set_clipboard_text(std::string_view text);

/// Fetches the text. `text` is untouched unless that is the answer.
ClipboardContent get_clipboard_text(std::string& text);

/// The clipboard of a desktop.
struct ClipboardHandler {
  std::function<bool(std::string_view text)> set;
  std::function<ClipboardContent(std::string& text)> get;
};

extern ClipboardHandler clipboard_handler;

/// The file that is the clipboard where no desktop is; empty for the one in `runtime_folder()`.
extern std::string clipboard_file;

}  // namespace corvelin
