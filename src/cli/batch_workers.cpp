// Workers are forks: they begin with the settings and the list as they are. Each is given one file
// after the other by its number, and answers with a packet. One that dies takes the file with it
// that it worked on; another one is started for the next.
#include "cli/batch_workers.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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

// A call that a signal broke off is made again.
ssize_t send_packet(int socket, const void* bytes, std::size_t size) {
  ssize_t sent = 0;
  do sent = ::send(socket, bytes, size, MSG_NOSIGNAL);
  while (sent < 0 && errno == EINTR);
  return sent;
}

ssize_t receive_packet(int socket, void* bytes, std::size_t size) {
  ssize_t received = 0;
  do received = ::recv(socket, bytes, size, 0);
  while (received < 0 && errno == EINTR);
  return received;
}

// What a worker does until nobody gives it files any more.
void answer_from(int socket, const BatchJob& job, const std::vector<const BatchItem*>& items) {
  BatchRun run(job);
  std::size_t index = 0;
  while (receive_packet(socket, &index, sizeof index) == sizeof index) {
    const std::string answer = packed(run.work_on(*items[index]));
    const bool is_told = send_packet(socket, answer.data(), answer.size()) > 0;
    if (!is_told || interruption() != 0) return;
  }
}

class Worker {
 public:
  // Gives it a file. False when the system has no process left for it.
  bool give(std::size_t index) {
    index_ = index;
    is_busy_ = send_packet(socket_.get(), &index, sizeof index) > 0;
    return is_busy_;
  }

  // `before` is done in the new process.
  bool start(const BatchJob& job, const std::vector<const BatchItem*>& items,
             const std::function<void()>& before) {
    int ends[2] = {};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return false;
    const FileHandle its_end(ends[1]);
    FileHandle our_end(ends[0]);
    process_ = ::fork();
    if (process_ == 0) {
      our_end = FileHandle();
      before();
      answer_from(its_end.get(), job, items);
      ::_exit(0);
    }
    if (process_ > 0) socket_ = std::move(our_end);
    return process_ > 0;
  }

  // Takes the answer, or the news that there will be none.
  void take_answer(BatchResult& result) {
    constexpr std::size_t longest = std::size_t{64} * 1024;  // bytes
    std::string answer(longest, '\0');
    const ssize_t size = receive_packet(socket_.get(), answer.data(), answer.size());
    answer.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    is_busy_ = false;
    if (!unpack(answer, result)) result.reason = end();
  }

  // Closes the way to it and waits for its end. Returns what that was like.
  std::string end() {
    socket_ = FileHandle();
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = 0;
    return WIFSIGNALED(status) ? fmt::format("the process that worked on it ended: {}",
                                             ::strsignal(WTERMSIG(status)))
                               : "the process that worked on it ended without an answer";
  }

  // In another worker: its socket must end with the one process that it belongs to.
  void forget() { socket_ = FileHandle(); }

  [[nodiscard]] bool is_there() const { return process_ > 0; }
  [[nodiscard]] bool is_busy() const { return is_busy_; }
  [[nodiscard]] std::size_t index() const { return index_; }
  [[nodiscard]] int descriptor() const { return socket_.get(); }

 private:
  pid_t process_ = 0;
  std::size_t index_ = 0;  // of the file
  bool is_busy_ = false;
  FileHandle socket_;
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
    for (Worker& worker : workers_)
      if (worker.is_there()) worker.end();
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
      if (begin(worker, next_)) {
        has_begun = true;
      } else {
        results_[next_].reason = last_error().message();
        know(next_);
      }
      ++next_;
    }
    return has_begun || (next_ < items_.size() && interruption() == 0);
  }

  bool begin(Worker& worker, std::size_t index) {
    if (worker.is_there()) {
      if (worker.give(index)) return true;
      worker.end();  // somebody ended it while it was idle
    }
    const auto forget_others = [this] {
      for (Worker& other : workers_) other.forget();
    };
    return worker.start(job_, items_, forget_others) && worker.give(index);
  }

  [[nodiscard]] bool is_any_busy() const { return std::ranges::any_of(workers_, &Worker::is_busy); }

  void wait_for_one() {
    std::vector<pollfd> ready;
    for (const Worker& worker : workers_)
      ready.push_back({.fd = worker.is_busy() ? worker.descriptor() : -1, .events = POLLIN});
    if (!is_any_busy() || ::poll(ready.data(), ready.size(), -1) <= 0) return;
    for (std::size_t i = 0; i < workers_.size(); ++i) {
      if (ready[i].revents == 0) continue;
      workers_[i].take_answer(results_[workers_[i].index()]);
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
