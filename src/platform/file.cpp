// Files on a POSIX system.
#include "platform/file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/path.h"

namespace corvelin {

namespace {

int open_with_mode(const char* path, int flags, mode_t mode) { return ::open(path, flags, mode); }

FileFacts facts_of(const struct stat& status) {
  return {.found = true,
          .is_regular = S_ISREG(status.st_mode),
          .is_folder = S_ISDIR(status.st_mode),
          .identity = {.device = status.st_dev, .inode = status.st_ino},
          .size = static_cast<std::uint64_t>(status.st_size),
          .write_time = status.st_mtim};
}

std::error_code not_a_regular_file(const FileFacts& facts) {
  return std::make_error_code(facts.is_folder ? std::errc::is_a_directory
                                              : std::errc::invalid_argument);
}

std::size_t read_fully(int descriptor, std::uint64_t offset, std::span<std::uint8_t> bytes,
                       std::error_code& error) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = ::pread(descriptor, bytes.data() + done, bytes.size() - done,
                                  static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
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
    const ssize_t count = put(bytes.subspan(done), done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return last_error();
    if (count == 0) return std::make_error_code(std::errc::no_space_on_device);
    done += static_cast<std::size_t>(count);
  }
  return {};
}

// A folder is synced so that a rename in it lasts. A file system that can't do it (some network
// ones) answers EINVAL, which says nothing about the rename; nor does a folder that may be written
// to but not read, and so can't be opened.
std::error_code sync_folder(std::string_view path) {
  const std::string folder(path.empty() ? "." : path);
  FileHandle handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!handle.is_open()) return {};
  if (write_calls.fsync(handle.get()) != 0 && errno != EINVAL) return last_error();
  return {};
}

}  // namespace

const WriteCalls system_write_calls = {
    .open = open_with_mode,
    .write = ::write,
    .pwrite = ::pwrite,
    .fallocate = ::fallocate,
    .ftruncate = ::ftruncate,
    .fsync = ::fsync,
    .futimens = ::futimens,
    .fchmod = ::fchmod,
    .close = ::close,
    .rename = ::rename,
    .unlink = ::unlink,
    .mkdir = ::mkdir,
    .rmdir = ::rmdir,
};
WriteCalls write_calls = system_write_calls;

std::error_code last_error() { return {errno, std::system_category()}; }

FileFacts file_facts(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return {};
  return facts_of(status);
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
  FileHandle handle(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!handle.is_open()) return last_error();
  struct stat status = {};
  if (::fstat(handle.get(), &status) != 0) return last_error();
  if (!S_ISREG(status.st_mode)) return not_a_regular_file(facts_of(status));
  handle_ = std::move(handle);
  read_error_.clear();
  return {};
}

std::size_t InputFile::read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  return read_fully(handle_.get(), offset, bytes, read_error_);
}

FileFacts InputFile::facts() const {
  struct stat status = {};
  if (::fstat(handle_.get(), &status) != 0) return {};
  return facts_of(status);
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

std::error_code OutputFile::create(const std::string& path) {
  const FileFacts before = file_facts(path);
  if (before.found && !before.is_regular) return not_a_regular_file(before);
  return open_for_writing(path, O_TRUNC | O_NONBLOCK | O_NOCTTY);
}

std::error_code OutputFile::create_new(const std::string& path) {
  return open_for_writing(path, O_EXCL);
}

std::error_code OutputFile::open_existing(const std::string& path) {
  FileHandle handle(write_calls.open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0));
  if (!handle.is_open()) return last_error();
  struct stat status = {};
  if (::fstat(handle.get(), &status) != 0) return last_error();
  if (!S_ISREG(status.st_mode)) return not_a_regular_file(facts_of(status));
  handle_ = std::move(handle);
  size_ = static_cast<std::uint64_t>(status.st_size);
  reserved_ = 0;
  return {};
}

std::error_code OutputFile::open_for_writing(const std::string& path, int flags) {
  FileHandle handle(write_calls.open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | flags, 0666));
  if (!handle.is_open()) return last_error();
  handle_ = std::move(handle);
  size_ = 0;
  reserved_ = 0;
  return {};
}

void OutputFile::reserve(std::uint64_t size) {
  const auto length = static_cast<off_t>(size);
  const bool done = write_calls.fallocate(handle_.get(), FALLOC_FL_KEEP_SIZE, 0, length) == 0;
  reserved_ = done ? size : 0;
}

std::error_code OutputFile::write(std::span<const std::uint8_t> bytes) {
  const std::error_code error = write_fully(bytes, [&](auto rest, std::size_t) {
    return write_calls.write(handle_.get(), rest.data(), rest.size());
  });
  if (!error) size_ += bytes.size();
  return error;
}

std::error_code OutputFile::write_at(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  return write_fully(bytes, [&](auto rest, std::size_t done) {
    return write_calls.pwrite(handle_.get(), rest.data(), rest.size(),
                              static_cast<off_t>(offset + done));
  });
}

std::error_code OutputFile::sync() {
  return write_calls.fsync(handle_.get()) != 0 ? last_error() : std::error_code{};
}

std::error_code OutputFile::give_back_reserve() {
  if (std::exchange(reserved_, 0) <= size_) return {};
  const auto size = static_cast<off_t>(size_);
  return write_calls.ftruncate(handle_.get(), size) != 0 ? last_error() : std::error_code{};
}

std::error_code OutputFile::set_write_time(std::timespec time) {
  if (const std::error_code error = give_back_reserve()) return error;  // which is a write too
  const std::timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, time};
  return write_calls.futimens(handle_.get(), times) != 0 ? last_error() : std::error_code{};
}

std::error_code OutputFile::copy_permissions_of(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return {};
  const bool done = write_calls.fchmod(handle_.get(), status.st_mode & 0777) == 0;
  return done || errno == EPERM ? std::error_code{} : last_error();
}

std::error_code OutputFile::close() {
  if (!handle_.is_open()) return {};
  std::error_code error = give_back_reserve();
  if (write_calls.close(handle_.release()) != 0 && !error) error = last_error();
  return error;
}

std::size_t OutputFile::read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  std::error_code ignored;  // a short read tells the caller enough
  return read_fully(handle_.get(), offset, bytes, ignored);
}

std::error_code rename_over(const std::string& from, const std::string& to) {
  if (write_calls.rename(from.c_str(), to.c_str()) != 0) return last_error();
  return sync_folder(folder_of(to));
}

std::string name_beside(const std::string& path) {
  std::string beside = fmt::format("{}.corvelin-{}~", folder_of(path), ::getpid());
  for (int number = 2; is_name_taken(beside); ++number)
    beside = fmt::format("{}.corvelin-{}-{}~", folder_of(path), ::getpid(), number);
  return beside;
}

std::error_code replace_file(const std::string& path, std::string_view bytes) {
  const std::string place = behind_links(path);
  const std::string beside = name_beside(place);
  OutputFile file;
  if (const std::error_code error = file.create_new(beside)) return error;
  const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  std::error_code error = file.copy_permissions_of(place);
  if (!error) error = file.write({data, bytes.size()});
  if (!error) error = file.sync();
  const std::error_code close_error = file.close();
  if (!error) error = close_error;
  if (!error) error = rename_over(beside, place);
  if (error) remove_file(beside);
  return error;
}

std::error_code remove_file(const std::string& path) {
  return write_calls.unlink(path.c_str()) != 0 ? last_error() : std::error_code{};
}

std::error_code create_folders(const std::string& path) {
  for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    const std::string folder = path.substr(0, end);
    const bool is_there = folder.empty() || ::access(folder.c_str(), F_OK) == 0;
    if (!is_there && write_calls.mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST)
      return last_error();
    if (end == std::string::npos) return {};
  }
}

std::error_code remove_folder(const std::string& path) {
  return write_calls.rmdir(path.c_str()) != 0 ? last_error() : std::error_code{};
}

bool can_enter_folder(const std::string& path) {
  return file_facts(path).is_folder && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace corvelin
