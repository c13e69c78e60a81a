// SPDX-License-Identifier: GPL-2.0-or-later
// Child processes, measured.
#include "runs.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

extern char** environ;

namespace corvelin::bench {

Cost run(const std::vector<std::string>& words) {
  std::vector<char*> argv;
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  const auto start = std::chrono::steady_clock::now();
  pid_t child = 0;
  if (::posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ) != 0) std::exit(1);
  int status = 0;
  rusage usage = {};
  ::wait4(child, &status, 0, &usage);
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
  posix_spawn_file_actions_destroy(&actions);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    fmt::print(stderr, "{} failed\n", words[0]);
    std::exit(1);
  }
  return {time.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

std::vector<Cost> best_of(const std::vector<std::function<Cost()>>& works, int count) {
  std::vector<Cost> best(works.size(), Cost{1e9, 0});
  for (int round = 0; round < count; ++round) {
    for (std::size_t i = 0; i < works.size(); ++i) {
      const Cost cost = works[i]();
      best[i].milliseconds = std::min(best[i].milliseconds, cost.milliseconds);
      best[i].megabytes = std::max(best[i].megabytes, cost.megabytes);
    }
  }
  return best;
}

void report(const std::string& name, const Cost& cost, const Cost& base,
            const std::string& base_name, double limit) {
  fmt::print("{:44} {:5.2f} x {} (limit {:.2f}), {:4.1f} MB\n", name,
             cost.milliseconds / base.milliseconds, base_name, limit, cost.megabytes);
}

}  // namespace corvelin::bench
