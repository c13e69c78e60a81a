// Workers are forks: they begin with the settings and the list as they are, and answer by a pipe.
#include "cli/batch_workers.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "platform/file.h"
#include "platform/interruption.h"
#include "platform/system_calls.h"

namespace corvelin {

namespace {

// A result as bytes: the outcome, then three texts that each end with a zero.
std::string packed(const BatchResult& result) {
  std::string bytes(1, static_cast<char>(result.outcome));
  for (const std::string* const text : {&result.name, &result.target, &result.reason})
    bytes.append(*text, 0, text->find('\0')) += '\0';
  return bytes;
}

bool unpack(const std::string& bytes, BatchResult& result) {
  if (bytes.empty() || std::ranges::count(bytes.substr(1), '\0') != 3) return false;
  result.outcome = static_cast<BatchOutcome>(bytes[0]);
  const char* text = bytes.data() + 1;
  for (std::string* const field : {&result.name, &result.target, &result.reason}) {
    *field = text;
    text += field->size() + 1;
  }
  return true;
}

void write_all(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;  // the result is missed, which tells that something went wrong
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

class Worker {
 public:
  // Begins with a file. False when the system has no process left for it.
  bool start(const BatchJob& job, const BatchItem& item, std::size_t index) {
    int ends[2] = {};
    if (::pipe2(ends, O_CLOEXEC) != 0) return false;
    answers_ = FileHandle(ends[0]);
    const FileHandle writing(ends[1]);
    process_ = ::fork();
    if (process_ == 0) {
      write_all(writing.get(), packed(BatchRun(job).work_on(item)));
      ::_exit(0);
    }
    index_ = index;
    answer_.clear();
    return process_ > 0;
  }

  // Reads what there is of the answer. False when it is complete.
  bool read() {
    std::array<char, 4096> block = {};
    const ssize_t got = ::read(answers_.get(), block.data(), block.size());
    if (got < 0 && errno == EINTR) return true;
    if (got <= 0) return false;
    answer_.append(block.data(), static_cast<std::size_t>(got));
    return true;
  }

  // Waits for the end, and tells the result.
  void end(BatchResult& result) {
    answers_ = FileHandle();
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = 0;
    if (unpack(answer_, result)) return;
    result.reason = WIFSIGNALED(status) ? fmt::format("the process that worked on it ended: {}",
                                                      ::strsignal(WTERMSIG(status)))
                                        : "the process that worked on it ended without an answer";
  }

  [[nodiscard]] bool is_busy() const { return process_ > 0; }
  [[nodiscard]] std::size_t index() const { return index_; }
  [[nodiscard]] int descriptor() const { return answers_.get(); }

 private:
  pid_t process_ = 0;
  std::size_t index_ = 0;  // of the file
  FileHandle answers_;
  std::string answer_;
};

class Workers {
 public:
  Workers(const BatchJob& job, unsigned count,
          const std::function<void(const BatchResult& result)>& tell)
      : job_(job), tell_(tell), workers_(count) {
    for (const BatchItem& item : job.items)
      if (item.is_selected) items_.push_back(&item);
    for (const BatchItem* const item : items_)
      results_.push_back({.name = item->name, .outcome = BatchOutcome::stopped});
    is_known_.resize(items_.size());
  }

  std::vector<BatchResult> run() {
    while (begin_next() || is_any_busy()) wait_for_one();
    while (told_ < results_.size()) tell_(results_[told_++]);  // that were not begun
    return std::move(results_);
  }

 private:
  // Gives each idle worker a file. Returns whether one was given.
  bool begin_next() {
    bool has_begun = false;
    for (Worker& worker : workers_) {
      if (worker.is_busy() || next_ >= items_.size() || interruption() != 0) continue;
      results_[next_].outcome = BatchOutcome::failed;  // until it is known
      if (worker.start(job_, *items_[next_], next_)) {
        has_begun = true;
      } else {
        results_[next_].reason = last_error().message();
        know(next_);
      }
      ++next_;
    }
    return has_begun || (next_ < items_.size() && interruption() == 0);
  }

  [[nodiscard]] bool is_any_busy() const { return std::ranges::any_of(workers_, &Worker::is_busy); }

  void wait_for_one() {
    std::vector<pollfd> ready;
    for (const Worker& worker : workers_)
      ready.push_back({.fd = worker.is_busy() ? worker.descriptor() : -1, .events = POLLIN});
    if (!is_any_busy() || ::poll(ready.data(), ready.size(), -1) <= 0) return;
    for (std::size_t i = 0; i < workers_.size(); ++i) {
      if (ready[i].revents == 0 || workers_[i].read()) continue;
      workers_[i].end(results_[workers_[i].index()]);
      know(workers_[i].index());
    }
  }

  void know(std::size_t index) {
    is_known_[index] = true;
    while (told_ < items_.size() && is_known_[told_]) tell_(results_[told_++]);
  }

  const BatchJob& job_;
  const std::function<void(const BatchResult& result)>& tell_;
  std::vector<Worker> workers_;
  std::vector<const BatchItem*> items_;
  std::vector<BatchResult> results_;
  std::vector<bool> is_known_;
  std::size_t next_ = 0;  // file to be begun
  std::size_t told_ = 0;  // files that were told, in their order
};

}  // namespace

std::vector<BatchResult> work_side_by_side(
    const BatchJob& job, unsigned workers,
    const std::function<void(const BatchResult& result)>& tell) {
  return Workers(job, workers, tell).run();
}

}  // namespace corvelin
