// SPDX-License-Identifier: GPL-2.0-or-later
// Files on a POSIX system.
#include "platform/files/file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/files/system_calls.h"

namespace corvelin {

namespace {

class FileErrorCategory : public std::error_category {
 public:
  [[nodiscard]] const char* name() const noexcept override { return "file"; }
  [[nodiscard]] std::string message(int error) const override {
    switch (static_cast<FileError>(error)) {
      case FileError::changed:
        return "Another program has changed this file";
      case FileError::in_use:
        return "Another run of this program is replacing this file";
      case FileError::other_kind:
        return "This file is of another kind and is not written over";
      case FileError::read_only:
        return "This file is write-protected";
      case FileError::not_regular:
        return "This is no regular file.";
    }
    return {};
  }
};

// A call that a signal broke off is made again.
template <typename Call>
auto unbroken(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

std::error_code outcome(int result) { return result != 0 ? last_error() : std::error_code{}; }

FileFacts facts_of(const struct stat& status) {
  return {.found = true,
          .is_regular = S_ISREG(status.st_mode),
          .is_folder = S_ISDIR(status.st_mode),
          .identity = {.device = status.st_dev, .inode = status.st_ino},
          .size = static_cast<std::uint64_t>(status.st_size),
          .write_time = status.st_mtim,
          .permissions = status.st_mode & 0777};
}

// Other programs' notes on a file, and lists of who may use it. Those that can't be read, or not be
// set here, are left, and so are the system's own labels, some of which vouch for the old bytes.
void copy_attributes(const std::string& from, int to) {
  constexpr std::size_t longest = std::size_t{64} * 1024;  // bytes, as the system has it
  std::string names(longest, '\0');
  const ssize_t size = ::listxattr(from.c_str(), names.data(), names.size());
  names.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
  std::string value(longest, '\0');
  for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    const char* const name = names.c_str() + at;
    if (std::string_view(name).starts_with("security.")) continue;
    const ssize_t length = ::getxattr(from.c_str(), name, value.data(), value.size());
    if (length >= 0) ::fsetxattr(to, name, value.data(), static_cast<std::size_t>(length), 0);
  }
}

std::error_code not_a_regular_file(const FileFacts& facts) {
  if (facts.is_folder) return std::make_error_code(std::errc::is_a_directory);
  return FileError::not_regular;
}

std::size_t read_fully(int descriptor, std::uint64_t offset, std::span<std::uint8_t> bytes,
                       std::error_code& error) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = unbroken([&] {
      return system_calls.pread(descriptor, bytes.data() + done, bytes.size() - done,
                                static_cast<off_t>(offset + done));
    });
    if (count < 0) error = last_error();
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

// Hands `bytes` to `put(bytes, done)` until all are taken. A call that takes nothing is a full
// disk.
template <typename Put>
std::error_code write_fully(std::span<const std::uint8_t> bytes, Put put) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = unbroken([&] { return put(bytes.subspan(done), done); });
    if (count < 0) return last_error();
    if (count == 0) return std::make_error_code(std::errc::no_space_on_device);
    done += static_cast<std::size_t>(count);
  }
  return {};
}

}  // namespace

std::error_code make_error_code(FileError error) {
  static const FileErrorCategory category;
  return {static_cast<int>(error), category};
}

FileFacts file_facts(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return {};
  return facts_of(status);
}

bool may_write_to(const std::string& path) {
  return (file_facts(path).permissions & 0222) != 0 && ::access(path.c_str(), W_OK) == 0;
}

bool is_unchanged(const FileFacts& before, const FileFacts& now) {
  return before.found == now.found && before.identity == now.identity && before.size == now.size &&
         before.write_time.tv_sec == now.write_time.tv_sec &&
         before.write_time.tv_nsec == now.write_time.tv_nsec;
}

bool is_name_taken(const std::string& path) {
  struct stat status = {};
  return ::lstat(path.c_str(), &status) == 0;
}

FileHandle::FileHandle(FileHandle&& other) noexcept : descriptor_(other.release()) {}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

FileHandle::~FileHandle() {
  if (is_open()) ::close(descriptor_);
}

int FileHandle::release() { return std::exchange(descriptor_, -1); }

std::error_code InputFile::open(const std::string& path) {
  // Without O_NONBLOCK a pipe would wait for its writer before it could be refused.
  constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  FileHandle handle(unbroken([&] { return system_calls.open(path.c_str(), flags, 0); }));
  if (!handle.is_open()) return last_error();
  struct stat status = {};
  if (system_calls.fstat(handle.get(), &status) != 0) return last_error();
  if (!S_ISREG(status.st_mode)) return not_a_regular_file(facts_of(status));
  handle_ = std::move(handle);
  facts_at_open_ = facts_of(status);
  read_error_ = 0;
  return {};
}

std::size_t InputFile::read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  std::error_code error;
  const std::size_t count = read_fully(handle_.get(), offset, bytes, error);
  if (error) read_error_ = error.value();
  return count;
}

FileFacts InputFile::facts() const {
  struct stat status = {};
  if (system_calls.fstat(handle_.get(), &status) == 0) return facts_of(status);
  read_error_ = last_error().value();
  return {};
}

std::error_code InputFile::lock() const {
  const bool is_locked = system_calls.flock(handle_.get(), LOCK_EX | LOCK_NB) == 0;
  return !is_locked && errno == EWOULDBLOCK ? FileError::in_use : std::error_code{};
}

std::error_code read_whole_file(const std::string& path, std::size_t limit, std::string& content) {
  InputFile file;
  if (const std::error_code error = file.open(path)) return error;
  const std::uint64_t size = file.facts().size;
  if (size > limit) return std::make_error_code(std::errc::file_too_large);
  content.resize(static_cast<std::size_t>(size));
  content.resize(
      file.read_at(0, {reinterpret_cast<std::uint8_t*>(content.data()), content.size()}));
  return file.read_error();
}

std::error_code OutputFile::create_new(const std::string& path, std::uint32_t permissions) {
  constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC;
  FileHandle handle(unbroken([&] { return system_calls.open(path.c_str(), flags, permissions); }));
  if (!handle.is_open()) return last_error();
  handle_ = std::move(handle);
  size_ = 0;
  reserved_ = 0;
  read_error_.clear();
  return {};
}

std::error_code OutputFile::open_existing(const std::string& path) {
  constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
  FileHandle handle(unbroken([&] { return system_calls.open(path.c_str(), flags, 0); }));
  if (!handle.is_open()) return last_error();
  struct stat status = {};
  if (system_calls.fstat(handle.get(), &status) != 0) return last_error();
  if (!S_ISREG(status.st_mode)) return not_a_regular_file(facts_of(status));
  handle_ = std::move(handle);
  size_ = static_cast<std::uint64_t>(status.st_size);
  reserved_ = 0;
  read_error_.clear();
  return {};
}

void OutputFile::reserve(std::uint64_t size) {
  const auto length = static_cast<off_t>(size);
  const bool done = system_calls.fallocate(handle_.get(), FALLOC_FL_KEEP_SIZE, 0, length) == 0;
  reserved_ = done ? size : 0;
}

std::error_code OutputFile::write(std::span<const std::uint8_t> bytes) {
  const std::error_code error = write_fully(bytes, [&](auto rest, std::size_t) {
    return system_calls.write(handle_.get(), rest.data(), rest.size());
  });
  if (!error) size_ += bytes.size();
  return error;
}

std::error_code OutputFile::write_at(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  return write_fully(bytes, [&](auto rest, std::size_t done) {
    return system_calls.pwrite(handle_.get(), rest.data(), rest.size(),
                               static_cast<off_t>(offset + done));
  });
}

std::error_code OutputFile::sync() {
  return outcome(unbroken([&] { return system_calls.fsync(handle_.get()); }));
}

std::error_code OutputFile::give_back_reserve() {
  if (std::exchange(reserved_, 0) <= size_) return {};
  const auto size = static_cast<off_t>(size_);
  return outcome(unbroken([&] { return system_calls.ftruncate(handle_.get(), size); }));
}

std::error_code OutputFile::set_write_time(std::timespec time) {
  if (const std::error_code error = give_back_reserve()) return error;  // which is a write too
  const std::timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, time};
  return outcome(system_calls.futimens(handle_.get(), times));
}

std::error_code OutputFile::take_owner_and_permissions_of(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return {};
  const auto give = [&](uid_t owner) {
    return system_calls.fchown(handle_.get(), owner, status.st_gid) == 0;
  };
  constexpr auto same_owner = static_cast<uid_t>(-1);
  const bool keeps_group = give(status.st_uid) || give(same_owner);
  mode_t mode = status.st_mode & 0777;
  // What was open to the one group must not be open to another.
  if (!keeps_group) mode = (mode & 0707) | (mode & 07) << 3;
  copy_attributes(path, handle_.get());
  const bool is_done = system_calls.fchmod(handle_.get(), mode) == 0;
  return is_done || errno == EPERM ? std::error_code{} : last_error();
}

std::error_code OutputFile::close() {
  if (!handle_.is_open()) return {};
  std::error_code error = give_back_reserve();
  if (system_calls.close(handle_.release()) != 0 && !error) error = last_error();
  return error;
}

std::size_t OutputFile::read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  return read_fully(handle_.get(), offset, bytes, read_error_);
}

std::error_code remove_file(const std::string& path) {
  return outcome(system_calls.unlink(path.c_str()));
}

std::error_code create_folders(const std::string& path) {
  for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    const std::string folder = path.substr(0, end);
    const bool is_there = folder.empty() || ::access(folder.c_str(), F_OK) == 0;
    if (!is_there && system_calls.mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST)
      return last_error();
    if (end == std::string::npos) return {};
  }
}

std::error_code remove_folder(const std::string& path) {
  return outcome(system_calls.rmdir(path.c_str()));
}

bool can_enter_folder(const std::string& path) {
  return file_facts(path).is_folder && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace corvelin
