// SPDX-License-Identifier: GPL-2.0-or-later
// Folders by the system's calls.
#include "platform/files/folder_list.h"

#include <dirent.h>
#include <fnmatch.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "platform/files/file.h"
#include "platform/files/system_calls.h"

namespace corvelin {

namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

bool fits(const char* name, const std::string& mask) {
  return ::fnmatch(mask.c_str(), name, FNM_NOESCAPE | FNM_CASEFOLD) == 0;
}

// A bracket means itself: it is a common letter in the names of recordings.
std::string pattern_of(std::string_view mask) {
  if (mask == "*.*") return "*";
  std::string pattern;
  for (const char c : mask) pattern += c == '[' ? std::string("[[]") : std::string(1, c);
  return pattern;
}

}  // namespace

std::error_code list_folder(const std::string& folder, std::string_view mask,
                            std::vector<FolderEntry>& entries) {
  entries.clear();
  const std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.c_str()));
  if (!open) return last_error();
  const std::string pattern = pattern_of(mask);
  // Only the error tells a folder's end from a disk that fails in the middle of it.
  for (errno = 0; const dirent* const entry = system_calls.readdir(open.get()); errno = 0) {
    const std::string name = static_cast<const char*>(entry->d_name);
    if (name == "." || name == ".." || !fits(name.c_str(), pattern)) continue;
    const FileFacts facts = file_facts(folder + name);
    if (!facts.found) continue;
    entries.push_back({.name = name,
                       .is_folder = facts.is_folder,
                       .size = facts.size,
                       .write_time = facts.write_time});
  }
  const int error = errno;
  if (error == 0) return {};
  entries.clear();
  return {error, std::system_category()};
}

bool can_list_folder(const std::string& folder) {
  return can_enter_folder(folder) && ::access(folder.c_str(), R_OK) == 0;
}

}  // namespace corvelin
