// SPDX-License-Identifier: GPL-2.0-or-later
// Files as bytes: sources that are only ever read, and targets that are written. The replacement of
// one file by another is replacing_file's business.
//
// Only regular files are opened: a folder, a pipe or a device is an error, not something to wait
// for. Errors are std::error_code, the system's own or a `FileError`, whose message() the user may
// be shown.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <span>
#include <string>
#include <system_error>

namespace corvelin {

/// Why a file is left alone that the system would let go.
enum class FileError {
  changed = 1,  // by another program, since it was looked at
  in_use,       // another run is about to replace it
  other_kind,   // it holds something else than what was to be written
  read_only,    // its permissions let nobody write to it, or not this user
  not_regular,  // a pipe, a device or a socket
};

std::error_code make_error_code(FileError error);

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
  std::uint32_t permissions = 0;  // the nine lowest bits of the mode
};

/// Looks a name up, through symbolic links.
FileFacts file_facts(const std::string& path);

/// Whether both are the facts of one file that was not written to between them, or of none.
bool is_unchanged(const FileFacts& before, const FileFacts& now);

/// Whether a file lets the user write to it. Its mode bits count for everybody: one that nobody may
/// write to is protected, also where a system's administrator asks.
bool may_write_to(const std::string& path);

/// The permissions of a new file that is nobody's secret; the user's mask takes from them.
constexpr std::uint32_t usual_permissions = 0666;

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

/// A file opened for reading. Reads name their offset, so no reader can disturb another's place,
/// and any number of threads may read.
class InputFile {
 public:
  std::error_code open(const std::string& path);

  /// Reads up to `bytes.size()` bytes at `offset`. Returns how many there were: fewer at the file's
  /// end and after a failure.
  std::size_t read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const;

  /// The failure of a read or of a question for its size, of any one since the file was opened:
  /// whoever takes a short read for the end of the file has not seen all of it.
  [[nodiscard]] std::error_code read_error() const {
    return {read_error_.load(), std::system_category()};
  }

  [[nodiscard]] bool is_open() const { return handle_.is_open(); }
  [[nodiscard]] FileFacts facts() const;  // as they are now; not `found` after a failure
  [[nodiscard]] const FileFacts& facts_at_open() const { return facts_at_open_; }

  /// Keeps other runs from doing the same until this file is closed: `in_use` when one does. Where
  /// the file system knows no locks there is none, and no error.
  std::error_code lock() const;

 private:
  FileHandle handle_;
  FileFacts facts_at_open_;
  mutable std::atomic<int> read_error_ = 0;  // `errno`; any reader on any thread sets it
};

/// The whole content of a file that is read at once. An error also for one of more than `limit`
/// bytes.
std::error_code read_whole_file(const std::string& path, std::size_t limit, std::string& content);

/// A file being written. Every operation tells its failure; closing does too, so close it before
/// you believe in it.
class OutputFile {
 public:
  /// Creates the file, for reading and writing, with these permissions from its first moment on. An
  /// error when anything has the name already, be it a link that leads nowhere.
  std::error_code create_new(const std::string& path,
                             std::uint32_t permissions = usual_permissions);
  /// Opens a file that is there, for `write_at`. A link is not followed.
  std::error_code open_existing(const std::string& path);
  /// Has the file system set space aside for `size` bytes in all, which makes long writes quicker.
  /// What it can't do shows in the writes. `close` gives back what was not used.
  void reserve(std::uint64_t size);
  std::error_code write(std::span<const std::uint8_t> bytes);
  std::error_code write_at(std::uint64_t offset, std::span<const std::uint8_t> bytes);
  std::error_code sync();
  std::error_code set_write_time(std::timespec time);
  /// Makes the file its owner's, its group's and open to whom the file `path` is, with the extended
  /// attributes of that, as far as the user may give it away and the file system knows of such
  /// things.
  std::error_code take_owner_and_permissions_of(const std::string& path);
  std::error_code close();

  /// Reads back what was written. Fewer bytes than asked for also after a failure, which
  /// `read_error` remembers.
  [[nodiscard]] std::size_t read_at(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
  [[nodiscard]] std::error_code read_error() const { return read_error_; }

  [[nodiscard]] bool is_open() const { return handle_.is_open(); }
  [[nodiscard]] std::uint64_t size() const { return size_; }  // bytes written by `write` so far

  /// For a child process that writes the file.
  [[nodiscard]] int descriptor() const { return handle_.get(); }

 private:
  std::error_code give_back_reserve();

  FileHandle handle_;
  std::uint64_t size_ = 0;
  std::uint64_t reserved_ = 0;
  mutable std::error_code read_error_;
};

std::error_code remove_file(const std::string& path);

/// Creates a folder, the ones above it included. No error when it is there already.
std::error_code create_folders(const std::string& path);

/// Removes a folder that is empty.
std::error_code remove_folder(const std::string& path);

/// Whether the folder is there and files in it can be reached.
bool can_enter_folder(const std::string& path);

}  // namespace corvelin

template <>
struct std::is_error_code_enum<corvelin::FileError> : std::true_type {};
