// Files as bytes: sources that are only ever read, targets that are written, and the replacement of
// one file by another such that a crash at any moment leaves the old or the new one whole.
//
// Only regular files are opened: a folder, a pipe or a device is an error, not something to wait
// for. Errors are the system's own, as std::error_code whose message() the user may be shown.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

namespace corvelin {

/// The error of the system call that failed last.
std::error_code last_error();

/// A file's identity: two names of one file (links, "./x" beside "x") have the same.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  bool operator==(const FileIdentity&) const = default;
};

/// What is known of a file beside its bytes. `found` is false when no file has the name.
struct FileFacts {
  bool found = false;
  bool is_regular = false;
  bool is_folder = false;
  FileIdentity identity;
  std::uint64_t size = 0;  // bytes
  std::timespec write_time = {};
};

/// Looks a name up, through symbolic links.
FileFacts file_facts(const std::string& path);

/// Whether anything has the name, be it a link that leads nowhere.
bool is_name_taken(const std::string& path);

/// Owns a file descriptor and closes it.
class FileHandle {
 public:
  FileHandle() = default;
  explicit FileHandle(int descriptor) : descriptor_(descriptor) {}
  FileHandle(FileHandle&& other) noexcept;
  FileHandle& operator=(FileHandle&& other) noexcept;
  ~FileHandle();

  [[nodiscard]] bool is_open() const { return descriptor_ >= 0; }
  [[nodiscard]] int get() const { return descriptor_; }
  int release();

 private:
  int descriptor_ = -1;
};

/// A file opened for reading. Reads name their offset, so no reader can disturb another's place.
class InputFile {
 public:
  std::error_code open(const std::string& path);

  /// Reads up to `bytes.size()` bytes at `offset`. Returns how many there were: fewer at the file's
  /// end and after a failure, which `read_error` remembers.
  std::size_t read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const;

  [[nodiscard]] bool is_open() const { return handle_.is_open(); }
  [[nodiscard]] std::error_code read_error() const { return read_error_; }
  void forget_read_error() { read_error_.clear(); }
  [[nodiscard]] FileFacts facts() const;  // as they are now

 private:
  FileHandle handle_;
  mutable std::error_code read_error_;
};

/// The whole content of a file that is read at once. An error also for one of more than `limit`
/// bytes.
std::error_code read_whole_file(const std::string& path, std::size_t limit, std::string& content);

/// A file being written. Every operation tells its failure; closing does too, so close it before
/// you believe in it.
class OutputFile {
 public:
  /// Creates the file anew, for reading and writing.
  std::error_code create(const std::string& path);
  /// The same, but an error when anything has the name already, be it a link that leads nowhere.
  std::error_code create_new(const std::string& path);
  /// Opens a file that is there, for `write_at`. A link is not followed.
  std::error_code open_existing(const std::string& path);
  /// Has the file system set space aside for `size` bytes in all, which makes long writes quicker.
  /// What it can't do shows in the writes. `close` gives back what was not used.
  void reserve(std::uint64_t size);
  std::error_code write(std::span<const std::uint8_t> bytes);
  std::error_code write_at(std::uint64_t offset, std::span<const std::uint8_t> bytes);
  std::error_code sync();
  std::error_code set_write_time(std::timespec time);
  /// As far as the file system has permissions to give.
  std::error_code copy_permissions_of(const std::string& path);
  std::error_code close();

  [[nodiscard]] std::size_t read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
  [[nodiscard]] bool is_open() const { return handle_.is_open(); }
  [[nodiscard]] std::uint64_t size() const { return size_; }  // bytes written by `write` so far

 private:
  std::error_code open_for_writing(const std::string& path, int flags);
  std::error_code give_back_reserve();

  FileHandle handle_;
  std::uint64_t size_ = 0;
  std::uint64_t reserved_ = 0;
};

/// Puts the finished, synced file `from` in the place of `to`, and syncs the folder. At no moment
/// is there no file called `to`, if there was one.
std::error_code rename_over(const std::string& from, const std::string& to);

/// A free name under which a new content of `path` can be written beside it: short, as `path` may
/// be as long as names get. Create the file with `create_new`: names beside others are known
/// before.
std::string name_beside(const std::string& path);

/// Writes `bytes` beside `path` and renames the result over it. After a failure `path` is as it
/// was, or, when only the folder could not be synced, has the new content, which may not last.
std::error_code replace_file(const std::string& path, std::string_view bytes);

std::error_code remove_file(const std::string& path);

/// Creates a folder, the ones above it included. No error when it is there already.
std::error_code create_folders(const std::string& path);

/// Removes a folder that is empty.
std::error_code remove_folder(const std::string& path);

/// Whether the folder is there and files in it can be reached.
bool can_enter_folder(const std::string& path);

/// The system calls that change something on disk. Tests put failing ones in their place to see
/// what becomes of a full disk or a broken one at every single step.
struct WriteCalls {
  int (*open)(const char* path, int flags, mode_t mode);
  ssize_t (*write)(int descriptor, const void* bytes, std::size_t count);
  ssize_t (*pwrite)(int descriptor, const void* bytes, std::size_t count, off_t offset);
  int (*fallocate)(int descriptor, int mode, off_t offset, off_t size);
  int (*ftruncate)(int descriptor, off_t size);
  int (*fsync)(int descriptor);
  int (*futimens)(int descriptor, const std::timespec times[2]);
  int (*fchmod)(int descriptor, mode_t mode);
  int (*close)(int descriptor);
  int (*rename)(const char* from, const char* to);
  int (*unlink)(const char* path);
  int (*mkdir)(const char* path, mode_t mode);
  int (*rmdir)(const char* path);
};

extern const WriteCalls system_write_calls;
extern WriteCalls write_calls;  // what the operations above use

}  // namespace corvelin
