// SPDX-License-Identifier: GPL-2.0-or-later
// Writing to the standard streams.
#include "cli/messages.h"

#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <utility>

#include "platform/files/file.h"
#include "platform/files/system_calls.h"
#include "platform/text/text.h"

namespace corvelin {

void write_message(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

void tell(std::string text) { write_message(text += '\n'); }

void complain(std::string text) { tell("corvelin-cli: " + printable(std::move(text))); }

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void outlive_readers() { std::signal(SIGPIPE, SIG_IGN); }

bool lock_output() {
  // What isn't a file, the null device or a terminal, many may write to.
  if (!file_facts("/dev/stdout").is_regular) return true;
  return system_calls.flock(STDOUT_FILENO, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool sync_output() {
  // A pipe or a terminal can't be synced, and says so.
  return system_calls.fsync(STDOUT_FILENO) == 0 || errno == EINVAL || errno == EROFS;
}

bool flush_output() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

}  // namespace corvelin
