// SPDX-License-Identifier: GPL-2.0-or-later
// Children of this process.
#include "platform/processes/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "platform/files/system_calls.h"

namespace corvelin {

namespace {

constexpr std::size_t most_complaints = 1000;  // bytes: what a box can show

// A group of processes of its own: a script that stands for the program ends with what it started.
class ChildGroup {
 public:
  ChildGroup() {
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
    ::posix_spawnattr_setpgroup(&attributes_, 0);
  }
  ChildGroup(const ChildGroup&) = delete;
  ChildGroup& operator=(const ChildGroup&) = delete;
  ~ChildGroup() { ::posix_spawnattr_destroy(&attributes_); }

  [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_ = {};
};

// What a child has in the place of the three standard streams.
class ChildStreams {
 public:
  ChildStreams(int output, int errors) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (output < 0) {
      ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    } else {
      ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    }
    ::posix_spawn_file_actions_adddup2(&actions_, errors, STDERR_FILENO);
  }
  ChildStreams(const ChildStreams&) = delete;
  ChildStreams& operator=(const ChildStreams&) = delete;
  ~ChildStreams() { ::posix_spawn_file_actions_destroy(&actions_); }

  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_ = {};
};

}  // namespace

std::error_code ChildProcess::start(const std::vector<std::string>& words, int output) {
  kill();
  complaints_.clear();
  status_ = 0;
  int ends[2] = {};
  if (::pipe2(ends, O_CLOEXEC) != 0) return last_error();
  errors_ = FileHandle(ends[0]);
  const FileHandle writing(ends[1]);

  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const ChildStreams streams(output, writing.get());
  const ChildGroup group;
  pid_t process = 0;
  const int error =
      ::posix_spawnp(&process, arguments[0], streams.get(), group.get(), arguments.data(), environ);
  if (error != 0) return {error, std::system_category()};
  process_ = process;
  return {};
}

// A program that is gone has closed its standard error; one that only closed that is still waited
// for.
bool ChildProcess::wait(int milliseconds) {
  if (process_ == 0) return false;
  if (errors_.is_open()) {
    pollfd ready = {.fd = errors_.get(), .events = POLLIN, .revents = 0};
    if (::poll(&ready, 1, milliseconds) > 0) take_complaints();
  } else {
    ::usleep(static_cast<useconds_t>(milliseconds) * 1000);
  }
  const pid_t ended = ::waitpid(process_, &status_, WNOHANG);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return true;
  reap();
  return false;
}

void ChildProcess::kill() {
  if (process_ == 0) return;
  ::kill(-process_, SIGKILL);
  while (::waitpid(process_, &status_, 0) < 0 && errno == EINTR) {
  }
  reap();
}

bool ChildProcess::has_succeeded() const {
  return process_ == 0 && WIFEXITED(status_) && WEXITSTATUS(status_) == 0;
}

void ChildProcess::take_complaints() {
  std::array<char, 4096> block = {};
  const ssize_t got = ::read(errors_.get(), block.data(), block.size());
  if (got <= 0) {
    if (got == 0 || errno != EINTR) errors_ = FileHandle();
    return;
  }
  complaints_.append(block.data(), static_cast<std::size_t>(got));
  if (complaints_.size() <= most_complaints) return;
  // The last lines, none of them without its beginning.
  complaints_.erase(0, complaints_.size() - most_complaints);
  const std::size_t line_end = complaints_.find('\n');
  if (line_end < complaints_.size() - 1) complaints_.erase(0, line_end + 1);
}

// The last words may still be in the pipe. A grandchild may hold it open, and isn't waited for.
void ChildProcess::reap() {
  process_ = 0;
  pollfd ready = {.fd = errors_.get(), .events = POLLIN, .revents = 0};
  while (errors_.is_open() && ::poll(&ready, 1, 0) > 0) take_complaints();
  errors_ = FileHandle();
}

}  // namespace corvelin
