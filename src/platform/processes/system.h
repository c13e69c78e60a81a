// SPDX-License-Identifier: GPL-2.0-or-later
// What the system says of itself: its folders, the program's own place, the screen.
#pragma once

#include <string>
#include <string_view>

namespace corvelin {

/// The screen as the window's defaults depend on it. The desktop fills it in before the first
/// reset.
struct Display {
  float scale = 1.0F;  // pixels per logical inch / 96
  int width = 1920;    // logical pixels
  int height = 1080;
  float ratio = 1.0F;  // pixels of a logical one
};

extern Display display;

/// The user's folder for configuration, without a "/" at its end: `XDG_CONFIG_HOME`, else
/// `~/.config`. Empty when the user has no home.
std::string configuration_folder();

/// The user's folder for documents, without a "/" at its end: as the file `user-dirs.dirs` of the
/// desktop says, else `~/Documents`. Empty when the user has no home.
std::string documents_folder();

/// The user's folder for files that live as long as the session, without a "/" at its end:
/// `XDG_RUNTIME_DIR`, else a private one below /tmp, made when it is missing. Empty when somebody
/// else holds that name or may enter it.
std::string runtime_folder();

/// The path of the running program.
std::string program_path();

/// The path of a file that comes with the program: beside it, or where an installation puts such
/// files.
std::string program_file(std::string_view name);

}  // namespace corvelin
