// SPDX-License-Identifier: GPL-2.0-or-later
// The text of the remote control file, in both directions: the command that somebody wrote into it
// on another computer, and the form in which this program writes it with its status.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvelin {

/// How much of the file is read. The list of the commands begins behind it, so that it is never
/// taken for one.
constexpr std::size_t remote_head_size = 65;  // bytes

enum class RemoteCommand { record, record_by_level, stop, save, quit };

/// The command in the first bytes of a file; nothing when there is none, and for a file of another
/// kind that has the name.
std::optional<RemoteCommand> remote_command(std::string_view head);

/// Whether a file with these first bytes is a remote control file, be it written by hand.
bool is_remote_file(std::string_view head);

/// The whole file, waiting for a command. `state` is UTF-8 with lines parted by "\n".
std::string remote_file_text(std::string_view state);

}  // namespace corvelin
