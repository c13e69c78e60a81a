// SPDX-License-Identifier: GPL-2.0-or-later
// Folders by the XDG base directory conventions, the program's place by /proc.
#include "platform/processes/system.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/files/file.h"
#include "platform/files/system_calls.h"
#include "platform/text/path.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

std::string environment(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string below_home(std::string_view folder) {
  std::string home = environment("HOME");
  return home.empty() ? home : home + "/" + std::string(folder);
}

// A line of user-dirs.dirs reads XDG_DOCUMENTS_DIR="$HOME/Papers" or holds an absolute path.
std::string documents_folder_in(std::string_view line) {
  constexpr std::string_view key = "XDG_DOCUMENTS_DIR=\"";
  constexpr std::string_view home = "$HOME/";
  if (!line.starts_with(key)) return {};
  const std::size_t end = line.find('"', key.size());
  if (end == std::string_view::npos) return {};
  const std::string_view value = line.substr(key.size(), end - key.size());
  if (value.starts_with('/')) return std::string(value);
  return value.starts_with(home) ? below_home(value.substr(home.size())) : "";
}

// A folder that nobody else can enter. In /tmp anybody may have taken the name before.
bool make_private_folder(const std::string& path) {
  system_calls.mkdir(path.c_str(), 0700);  // what stands there afterwards is judged
  struct stat status = {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
  return status.st_uid == ::geteuid() && (status.st_mode & 077) == 0;
}

}  // namespace

Display display;

std::string configuration_folder() {
  std::string folder = environment("XDG_CONFIG_HOME");
  return folder.starts_with('/') ? folder : below_home(".config");
}

std::string documents_folder() {
  constexpr std::size_t largest_list = 65536;  // bytes
  std::string text;
  read_whole_file(configuration_folder() + "/user-dirs.dirs", largest_list, text);
  std::string_view rest = text;
  for (std::string_view line; take_line(rest, line);) {
    std::string folder = documents_folder_in(line);
    if (!folder.empty()) return folder;
  }
  return below_home("Documents");
}

std::string runtime_folder() {
  std::string folder = environment("XDG_RUNTIME_DIR");
  if (folder.starts_with('/') && can_enter_folder(folder)) return folder;
  folder = "/tmp/corvelin-" + std::to_string(::geteuid());
  return make_private_folder(folder) ? folder : std::string();
}

std::string program_path() {
  // Asked once: when an update takes the file away the link tells another name.
  static const std::string path = [] {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
  }();
  return path;
}

std::string program_file(std::string_view name) {
  const std::string folder(folder_of(program_path()));
  std::string beside = folder + std::string(name);
  if (file_facts(beside).found) return beside;
  const std::filesystem::path shared = folder + "../share/corvelin/" + std::string(name);
  std::string installed = shared.lexically_normal();  // the user may be shown it
  if (file_facts(installed).found) return installed;
  return beside;
}

}  // namespace corvelin
