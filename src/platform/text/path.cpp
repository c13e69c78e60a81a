// SPDX-License-Identifier: GPL-2.0-or-later
// The arithmetic of paths.
#include "platform/text/path.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/files/file.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

// Whether a path begins at the root and has no step that leads nowhere or back.
bool is_clean(std::string_view path) {
  if (!path.starts_with('/')) return false;
  for (std::size_t at = 1; at < path.size();) {
    const std::size_t end = std::min(path.find('/', at), path.size());
    const std::string_view step = path.substr(at, end - at);
    if (step.empty() || step == "." || step == "..") return false;
    at = end + 1;
  }
  return true;
}

// The path from the root on, with single separators and without "." and ".."; the folder "" is the
// current one, with its "/". Links stay, but for one that ".." leads out of.
std::string from_root(const std::string& path) {
  if (is_clean(path)) return path;  // most are, and of many it would take a while
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path whole = path.starts_with('/') ? fs::path(path) : fs::current_path(error) / path;
  if (error && !whole.is_absolute()) return path;
  fs::path clean = "/";
  for (const fs::path& step : whole.relative_path()) {
    if (step == "..") {
      if (fs::is_symlink(clean, error)) clean = fs::weakly_canonical(clean, error);
      clean = clean.parent_path();
    } else if (!step.empty() && step != ".") {
      clean /= step;
    }
  }
  const bool is_folder = whole.native().ends_with('/') && clean != "/";
  return is_folder ? clean.native() + '/' : clean.native();
}

}  // namespace

std::string_view folder_of(std::string_view path) { return path.substr(0, path.rfind('/') + 1); }

std::string_view name_of(std::string_view path) { return path.substr(path.rfind('/') + 1); }

std::string in_folder(std::string_view folder, std::string_view name) {
  const bool is_parted = folder.empty() || folder.ends_with('/');
  return std::string(folder).append(is_parted ? "" : "/").append(name);
}

std::string_view extension_of(std::string_view path) {
  const std::size_t point = path.rfind('.');
  return point == std::string_view::npos ? std::string_view{} : path.substr(point);
}

bool has_extension(std::string_view path, std::string_view extension) {
  return equal_ignoring_case(extension_of(path), extension);
}

std::string with_extension(std::string_view path, std::string_view extension) {
  const std::size_t own = extension_of(name_of(path)).size();
  return std::string(path.substr(0, path.size() - own)).append(extension);
}

std::string path_from_outside(std::string_view text, std::string_view folder) {
  const auto from_folder = [folder](std::string_view path) {
    return std::string(path.starts_with('/') ? "" : folder).append(path);
  };
  std::string path = from_folder(text);
  if (file_facts(path).found) return from_root(path);
  const bool has_drive = text.size() > 1 && text[1] == ':';
  if (has_drive) return std::string(text);
  std::string parted(text);
  std::ranges::replace(parted, '\\', '/');
  path = from_folder(parted);
  return file_facts(path).found ? from_root(path) : path;
}

std::string path_from_encoded(std::string_view text, bool utf8, std::string_view folder) {
  std::string path = path_from_outside(text, folder);
  if (utf8 || file_facts(path).found) return path;
  return path_from_outside(wide_to_bytes(bytes_to_wide(text, false), true), folder);
}

std::string relative_to_folder(const std::string& path, const std::string& folder) {
  const std::string whole_path = from_root(path);
  const std::string whole_folder = from_root(folder);
  return whole_path.starts_with(whole_folder) ? whole_path.substr(whole_folder.size()) : whole_path;
}

std::string in_current_folder(std::string_view path) {
  return path.empty() ? std::string() : from_root(std::string(path));
}

std::string behind_links(const std::string& path) {
  constexpr int longest_chain = 40;  // of links, as the system follows them
  std::string place = path;
  std::error_code error;
  for (int i = 0; i < longest_chain && std::filesystem::is_symlink(place, error); ++i) {
    std::string link = std::filesystem::read_symlink(place, error).string();
    if (error) return path;
    if (!link.starts_with('/')) link.insert(0, folder_of(place));
    place = std::move(link);
  }
  return place;
}

}  // namespace corvelin
