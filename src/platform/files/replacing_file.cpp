// SPDX-License-Identifier: GPL-2.0-or-later
// Replacing files, on a POSIX system.
#include "platform/files/replacing_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "platform/files/system_calls.h"
#include "platform/text/path.h"
#include "platform/text/text.h"

namespace corvelin {

namespace {

// A folder is synced so that a rename in it lasts. A file system that can't do it (some network
// ones) answers EINVAL, which says nothing about the rename; nor does a folder that may be written
// to but not read, and so can't be opened.
std::error_code sync_folder(std::string_view path) {
  const std::string folder(path.empty() ? "." : path);
  FileHandle handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!handle.is_open()) return {};
  if (system_calls.fsync(handle.get()) != 0 && errno != EINVAL) return last_error();
  return {};
}

// A file that an earlier failure left there is not touched: it may be all that there is of
// somebody's work.
std::string free_marked_name(const std::string& name, std::string_view mark,
                             std::string_view extension) {
  constexpr std::size_t longest_name = 255;  // bytes, as common file systems have it
  std::string end = fmt::format("{}{}", mark, extension);
  for (int number = 2;; ++number) {
    const std::size_t room = longest_name - std::min(longest_name, end.size());
    std::string beside =
        fmt::format("{}{}{}", folder_of(name), cut_to_bytes(name_of(name), room), end);
    if (!is_name_taken(beside)) return beside;
    end = fmt::format("{}.{}{}", mark, number, extension);
  }
}

}  // namespace

std::error_code ReplacingFile::begin(const std::string& name, std::uint32_t permissions) {
  name_ = behind_links(name);
  before_ = file_facts(name_);
  is_hidden_ = before_.is_regular;
  return begin_beside(is_hidden_ ? name_beside(name_) : name_, permissions);
}

std::error_code ReplacingFile::begin_marked(const std::string& name, std::string_view mark,
                                            std::string_view extension, std::uint32_t permissions) {
  name_ = behind_links(name);
  before_ = file_facts(name_);
  return begin_beside(free_marked_name(name_, mark, extension), permissions);
}

std::error_code ReplacingFile::begin_beside(std::string written, std::uint32_t permissions) {
  written_ = std::move(written);
  // What is neither a file nor free is told by its own kind: a folder, a pipe.
  if (before_.found && !before_.is_regular) {
    InputFile none;
    return none.open(name_);
  }
  if (before_.found && !may_write_to(name_)) return FileError::read_only;
  // What replaces another file is nobody else's before it has that one's permissions.
  constexpr std::uint32_t owner_alone = 0600;
  // A name that was free a moment ago somebody may have taken.
  if (const std::error_code error =
          file.create_new(written_, before_.found ? owner_alone : permissions))
    return error;
  is_created_ = true;
  return before_.found ? file.take_owner_and_permissions_of(name_) : std::error_code{};
}

std::error_code ReplacingFile::complete() {
  const std::error_code error = replaces() ? file.sync() : std::error_code{};
  const std::error_code close_error = file.close();
  return error ? error : close_error;
}

std::error_code ReplacingFile::commit() {
  if (file.is_open())
    if (const std::error_code error = complete()) return error;
  if (replaces()) {
    const FileFacts now = file_facts(name_);
    if (now.found && !is_unchanged(before_, now)) return FileError::changed;
    if (system_calls.rename(written_.c_str(), name_.c_str()) != 0) return last_error();
  }
  has_its_name_ = true;
  return replaces() ? sync_folder(folder_of(name_)) : std::error_code{};
}

void ReplacingFile::give_up(LeftBeside left) {
  file.close();  // it is incomplete, whatever the answer
  const bool goes = is_hidden_ || (replaces() && left == LeftBeside::goes);
  if (!goes || !is_unfinished()) return;
  remove_file(written_);
  is_created_ = false;
}

std::string name_beside(const std::string& path) {
  std::string beside = fmt::format("{}.corvelin-{}~", folder_of(path), ::getpid());
  for (int number = 2; is_name_taken(beside); ++number)
    beside = fmt::format("{}.corvelin-{}-{}~", folder_of(path), ::getpid(), number);
  return beside;
}

std::error_code check_kind(const std::string& path, KindTest is_kind) {
  InputFile file;
  const std::error_code error = file.open(path);
  if (error == std::errc::no_such_file_or_directory) return {};
  if (error) return error;
  std::array<char, 4096> head = {};
  const std::size_t size =
      file.read_at(0, {reinterpret_cast<std::uint8_t*>(head.data()), head.size()});
  if (file.read_error()) return file.read_error();
  if (size == 0 || is_kind({head.data(), size})) return {};
  return FileError::other_kind;
}

std::error_code replace_text(const std::string& path, std::string_view text, KindTest is_kind) {
  if (const std::error_code error = check_kind(path, is_kind)) return error;
  ReplacingFile replacing;
  std::error_code error = replacing.begin(path);
  const auto* const data = reinterpret_cast<const std::uint8_t*>(text.data());
  if (!error) error = replacing.file.write({data, text.size()});
  return error ? error : replacing.commit();
}

}  // namespace corvelin
