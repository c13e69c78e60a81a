// SPDX-License-Identifier: GPL-2.0-or-later
// The system calls on files, in one table. Tests put failing ones in their place to see what
// becomes of a full disk or a broken one at every single step.
#pragma once

#include <dirent.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <ctime>
#include <system_error>

namespace corvelin {

struct SystemCalls {
  int (*open)(const char* path, int flags, mode_t mode);
  int (*fstat)(int descriptor, struct stat* status);
  ssize_t (*pread)(int descriptor, void* bytes, std::size_t count, off_t offset);
  ssize_t (*write)(int descriptor, const void* bytes, std::size_t count);
  ssize_t (*pwrite)(int descriptor, const void* bytes, std::size_t count, off_t offset);
  int (*fallocate)(int descriptor, int mode, off_t offset, off_t size);
  int (*ftruncate)(int descriptor, off_t size);
  int (*fsync)(int descriptor);
  int (*futimens)(int descriptor, const std::timespec times[2]);
  int (*fchmod)(int descriptor, mode_t mode);
  int (*fchown)(int descriptor, uid_t owner, gid_t group);
  int (*flock)(int descriptor, int operation);
  int (*close)(int descriptor);
  int (*rename)(const char* from, const char* to);
  int (*unlink)(const char* path);
  int (*mkdir)(const char* path, mode_t mode);
  int (*rmdir)(const char* path);
  dirent* (*readdir)(DIR* folder);
};

extern const SystemCalls original_system_calls;
extern SystemCalls system_calls;  // what the file operations use

/// The error of the system call that failed last.
std::error_code last_error();

}  // namespace corvelin
