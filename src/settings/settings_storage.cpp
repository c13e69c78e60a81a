// SPDX-License-Identifier: GPL-2.0-or-later
// The choice of the settings file.
#include "settings/settings_storage.h"

#include "platform/files/file.h"
#include "platform/processes/system.h"
#include "platform/text/path.h"
#include "settings/settings_file.h"

namespace corvelin {

namespace {

constexpr const char* settings_name = "/Corvelin.ini";

std::string user_settings_folder() {
  const std::string folder = configuration_folder();
  return folder.empty() ? folder : folder + "/Corvelin";
}

}  // namespace

SettingsStorage settings_storage = SettingsStorage::beside_program;
std::string settings_path;

std::optional<std::string> user_settings_path(bool create) {
  const std::string folder = user_settings_folder();
  if (folder.empty()) return std::nullopt;
  if (create) create_folders(folder);  // a failure shows in the next line
  if (!can_enter_folder(folder)) return std::nullopt;
  return folder + settings_name;
}

std::string local_settings_path() { return with_extension(program_path(), ".ini"); }

bool local_marker(MarkerOperation operation) {
  const std::string path = std::string(folder_of(program_path())) + "corvllocal.ini";
  const bool exists = file_facts(path).found;
  if (operation == MarkerOperation::create && !exists) OutputFile().create_new(path);
  if (operation == MarkerOperation::remove && exists) remove_file(path);
  return file_facts(path).found;
}

bool force_portable(bool on) {
  const bool exists = local_marker(on ? MarkerOperation::create : MarkerOperation::remove);
  settings_storage = exists ? SettingsStorage::portable : SettingsStorage::beside_program;
  return exists;
}

std::string choose_settings_file(bool local_run) {
  if (local_run || local_marker(MarkerOperation::test)) {
    settings_storage = SettingsStorage::portable;
    return local_settings_path();
  }
  if (const auto path = user_settings_path(false)) {
    settings_storage = SettingsStorage::user_profile;
    return *path;
  }
  settings_storage = SettingsStorage::beside_program;
  return local_settings_path();
}

std::error_code store_settings() {
  if (settings_storage == SettingsStorage::portable) return write_settings(local_settings_path());
  if (settings_storage == SettingsStorage::beside_program) {
    if (!write_settings(local_settings_path())) return {};
    settings_storage = SettingsStorage::user_profile;
  }
  if (settings_storage == SettingsStorage::removed) return {};
  const auto path = user_settings_path(true);
  if (!path) return std::make_error_code(std::errc::no_such_file_or_directory);
  return write_settings(*path);
}

std::error_code remove_user_settings() {
  if (settings_storage != SettingsStorage::user_profile)
    return std::make_error_code(std::errc::no_such_file_or_directory);
  const std::string folder = user_settings_folder();
  if (const std::error_code error = remove_file(folder + settings_name)) return error;
  if (const std::error_code error = remove_folder(folder)) return error;
  settings_storage = SettingsStorage::removed;
  return {};
}

}  // namespace corvelin
