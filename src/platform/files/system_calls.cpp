// SPDX-License-Identifier: GPL-2.0-or-later
// The table of system calls as the system has them.
#include "platform/files/system_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace corvelin {

namespace {

int open_with_mode(const char* path, int flags, mode_t mode) { return ::open(path, flags, mode); }

}  // namespace

const SystemCalls original_system_calls = {
    .open = open_with_mode,
    .fstat = ::fstat,
    .pread = ::pread,
    .write = ::write,
    .pwrite = ::pwrite,
    .fallocate = ::fallocate,
    .ftruncate = ::ftruncate,
    .fsync = ::fsync,
    .futimens = ::futimens,
    .fchmod = ::fchmod,
    .fchown = ::fchown,
    .flock = ::flock,
    .close = ::close,
    .rename = ::rename,
    .unlink = ::unlink,
    .mkdir = ::mkdir,
    .rmdir = ::rmdir,
    .readdir = ::readdir,
};
SystemCalls system_calls = original_system_calls;

std::error_code last_error() { return {errno, std::system_category()}; }

}  // namespace corvelin
