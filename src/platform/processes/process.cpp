// SPDX-License-Identifier: GPL-2.0-or-later
// Programs started on a POSIX system.
#include "platform/processes/process.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "platform/files/file.h"
#include "platform/files/system_calls.h"
#include "platform/text/path.h"

namespace corvelin {

namespace {

// Becomes the program. If that fails, its reason goes down `pipe`, which closes by itself if not.
// Between fork and exec nothing may be allocated.
[[noreturn]] void become(char* const* words, int pipe) {
  ::setsid();
  ::execvp(words[0], words);
  const int reason = errno;
  const ssize_t written = ::write(pipe, &reason, sizeof reason);
  ::_exit(written == sizeof reason ? 0 : 1);
}

}  // namespace

std::error_code start_program(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  int ends[2] = {};
  if (::pipe2(ends, O_CLOEXEC) != 0) return last_error();
  const FileHandle reading(ends[0]);
  FileHandle writing(ends[1]);

  // The child of a child that has ended belongs to the system, which takes its end note of it.
  const pid_t child = ::fork();
  if (child < 0) return last_error();
  if (child == 0) {
    const pid_t grandchild = ::fork();
    if (grandchild == 0) become(arguments.data(), ends[1]);
    ::_exit(grandchild < 0 ? 1 : 0);
  }
  writing = FileHandle();
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (status != 0) return std::make_error_code(std::errc::resource_unavailable_try_again);
  int reason = 0;
  const ssize_t got = ::read(reading.get(), &reason, sizeof reason);
  return got == sizeof reason ? std::error_code(reason, std::system_category()) : std::error_code{};
}

bool has_program(const std::string& name) {
  const char* const path = std::getenv("PATH");
  std::string_view rest = path == nullptr ? "" : path;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    const std::string file = in_folder(rest.substr(0, end), name);
    if (::access(file.c_str(), X_OK) == 0 && file_facts(file).is_regular) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

void set_high_priority(bool on) {
  static const int usual = ::getpriority(PRIO_PROCESS, 0);
  constexpr int high = -10;
  rlimit limit = {};
  ::getrlimit(RLIMIT_NICE, &limit);
  const int permitted = 20 - static_cast<int>(std::min<rlim_t>(limit.rlim_cur, 40));
  const int wanted = on ? std::min(usual, high) : usual;
  if (::setpriority(PRIO_PROCESS, 0, wanted) != 0)
    ::setpriority(PRIO_PROCESS, 0, std::max(wanted, permitted));
}

}  // namespace corvelin
