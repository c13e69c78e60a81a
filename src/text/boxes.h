// SPDX-License-Identifier: GPL-2.0-or-later
// The boxes of what can't be done and of what went wrong, which several commands share. Each has an
// error icon, and a refusal the caption "Not possible".
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

/// Tells what went wrong, as in a failed write, under the caption "Error".
void show_error(const std::string& text);

/// Opens a file or a folder with the program that the user has for its kind. Where that can't be
/// done the user is told where the file lies, and the answer is false.
bool open_for_user(const std::string& path);

/// Tells that, with what the viewer says of it.
void show_no_viewer(const std::string& path, const std::string& cause);

/// Tells why a command is refused.
void show_refusal(std::string_view text);

/// Asks whether a dialog is to take its default values.
bool confirm_defaults();

/// The range can't be taken out, or can't be treated as one.
void show_invalid_range();

}  // namespace corvelin
