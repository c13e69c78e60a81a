// SPDX-License-Identifier: GPL-2.0-or-later
// Where the settings live: in the user's profile, or beside the program, and which of the two it
// is.
#pragma once

#include <optional>
#include <string>
#include <system_error>

namespace corvelin {

enum class SettingsStorage {
  beside_program = 0,  // moves to the user's profile when the program's folder can't be written to
  user_profile = 1,
  removed = 2,   // the settings of the profile were removed, or can't be read: nothing is written
  portable = 3,  // beside the program, by the marker file or for this run
};

extern SettingsStorage settings_storage;

/// The file that the settings were read from at the start.
extern std::string settings_path;

/// The settings file in the user's profile. Nothing when its folder can't be entered; with `create`
/// the folder is made first.
std::optional<std::string> user_settings_path(bool create);

/// The program's own path with the extension ".ini".
std::string local_settings_path();

enum class MarkerOperation { test, create, remove };

/// The file beside the program that makes its settings portable. Returns whether it exists
/// afterwards.
bool local_marker(MarkerOperation operation);

/// Sets or removes the marker, as the user wants the settings beside the program or not, and has
/// the storage follow. Returns whether they are forced there now.
bool force_portable(bool on);

/// Chooses the storage and returns the path to read from. `local_run`: portable for this run.
std::string choose_settings_file(bool local_run);

/// Writes the settings where the storage says.
std::error_code store_settings();

/// Removes the settings of the user's profile and their folder, after which nothing is written.
/// Only in that storage. An error when either stays.
std::error_code remove_user_settings();

}  // namespace corvelin
