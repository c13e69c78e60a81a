// SPDX-License-Identifier: GPL-2.0-or-later
// What becomes of a batch when one of its processes dies.
#include "cli/batch_workers.h"

#include <sys/types.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/files/system_calls.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

pid_t program = 0;

int open_or_die(const char* path, int flags, mode_t mode) {
  if (::getpid() != program && std::string_view(path).ends_with("/2.mp3")) ::raise(SIGKILL);
  return original_system_calls.open(path, flags, mode);
}

class BatchWorkers : public CoreTest {
 protected:
  ~BatchWorkers() override { system_calls = original_system_calls; }
};

TEST_F(BatchWorkers, ADeadOneCostsItsFileAlone) {
  program = ::getpid();
  system_calls.open = open_or_die;
  for (const char* const name : {"1.mp3", "2.mp3", "3.mp3"}) folder.file(name, frames(30));
  BatchJob job;
  job.source_folder = folder.path("");
  job.set_option(BatchOption::only_save, true);
  job.scan_batch_folder();
  for (const unsigned workers : {1U, 2U}) {
    std::string told;
    const auto tell = [&](const BatchResult& result) {
      told += result.name + " " + std::string(name_of(result.outcome)) + "; ";
    };
    const auto results = work_side_by_side(job, workers, {.tell = tell});
    EXPECT_EQ(told, "1.mp3 written; 2.mp3 failed; 3.mp3 written; ");
    EXPECT_EQ(results[1].reason, "the process that worked on it ended: Killed");
    for (const char* const made : {"1.mp3.mp3", "3.mp3.mp3"})
      std::filesystem::remove(folder.path(made));
  }
}

}  // namespace
}  // namespace corvelin::test
