// SPDX-License-Identifier: GPL-2.0-or-later
// Workers are forks: they begin with the settings and the list as they are. Each is given one file
// after the other by its number, and answers with a packet; before it writes it asks with another
// one. One that dies takes the file with it that it worked on; another one is started for the next.
#include "cli/batch_workers.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "edit/editor.h"
#include "platform/files/file.h"
#include "platform/files/system_calls.h"
#include "platform/processes/interruption.h"

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

// The question before a write, as bytes: a mark that no outcome has, the facts of the source, and
// the target.
constexpr char mark_of_question = '?';
static_assert(std::is_trivially_copyable_v<FileFacts>);

std::string packed(const BatchStart& start) {
  std::string bytes(1 + sizeof start.source, mark_of_question);
  std::memcpy(bytes.data() + 1, &start.source, sizeof start.source);
  return bytes + start.target;
}

std::optional<BatchStart> unpack_question(const std::string& bytes, const std::string& name) {
  BatchStart start = {.name = name};
  constexpr std::size_t size = 1 + sizeof start.source;
  if (!bytes.starts_with(mark_of_question) || bytes.size() < size) return std::nullopt;
  std::memcpy(&start.source, bytes.data() + 1, sizeof start.source);
  start.target = bytes.substr(size);
  return start;
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

constexpr int out_of_memory = 2;                                // the status of a worker
constexpr std::size_t longest_packet = std::size_t{64} * 1024;  // bytes

std::string receive_packet(int socket) {
  std::string bytes(longest_packet, '\0');
  const ssize_t size = receive_packet(socket, bytes.data(), bytes.size());
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
  return bytes;
}

// Returns why it may not be written. The answer is the mark, and behind it the reason, if any.
std::string ask(int socket, const BatchStart& start) {
  const std::string question = packed(start);
  const bool is_asked = send_packet(socket, question.data(), question.size()) > 0;
  const std::string answer = is_asked ? receive_packet(socket) : std::string();
  return answer.empty() ? "nobody knows of it any more" : answer.substr(1);
}

class Worker {
 public:
  // Gives it a file. False when the system has no process left for it.
  bool give(std::size_t index) {
    index_ = index;
    is_busy_ = send_packet(socket_.get(), &index, sizeof index) > 0;
    return is_busy_;
  }

  // `work` is done in the new process, with its end of the way.
  bool start(const std::function<void(int socket)>& work) {
    int ends[2] = {};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return false;
    const FileHandle its_end(ends[1]);
    FileHandle our_end(ends[0]);
    process_ = ::fork();
    if (process_ == 0) {
      our_end = FileHandle();
      try {
        work(its_end.get());
      } catch (const std::bad_alloc&) {
        ::_exit(out_of_memory);
      }
      ::_exit(0);
    }
    if (process_ > 0) socket_ = std::move(our_end);
    return process_ > 0;
  }

  // A question, or the result. Empty when there will be none.
  [[nodiscard]] std::string listen() const { return receive_packet(socket_.get()); }

  void answer(const std::string& refusal) const {
    const std::string bytes = mark_of_question + refusal.substr(0, longest_packet - 1);
    send_packet(socket_.get(), bytes.data(), bytes.size());  // one that is gone shows in `listen`
  }

  void take_result(const std::string& bytes, BatchResult& result) {
    is_busy_ = false;
    if (!unpack(bytes, result)) result.reason = end();
  }

  // Closes the way to it and waits for its end. Returns what that was like.
  std::string end() {
    socket_ = FileHandle();
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = 0;
    if (WIFEXITED(status) && WEXITSTATUS(status) == out_of_memory)
      return "there is not enough memory for it";
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
  Workers(const BatchJob& job, unsigned count, const BatchListener& listener)
      : listener_(listener), run_(editor_, job, nullptr, question()), workers_(count) {
    for (const BatchItem& item : job.items)
      if (item.is_selected) items_.push_back(&item);
    for (const BatchItem* const item : items_)
      results_.push_back({.name = item->name, .outcome = BatchOutcome::stopped});
    is_known_.resize(items_.size());
    is_told_.resize(items_.size());
  }

  std::vector<BatchResult> run() {
    while (begin_next() || is_any_busy()) wait_for_one();
    for (Worker& worker : workers_)
      if (worker.is_there()) worker.end();
    for (std::size_t i = 0; i < results_.size(); ++i)
      if (!is_told_[i]) listener_.tell(results_[i]);  // that were not begun
    return std::move(results_);
  }

 private:
  // Gives each idle worker a file. Returns whether one was given.
  bool begin_next() {
    bool has_begun = false;
    for (Worker& worker : workers_) {
      if (worker.is_busy() || !goes_on()) continue;
      results_[next_].outcome = BatchOutcome::failed;  // until it is known
      if (begin(worker, next_)) {
        has_begun = true;
      } else {
        results_[next_].reason = last_error().message();
        know(next_);
      }
      ++next_;
    }
    return has_begun || goes_on();
  }

  [[nodiscard]] bool goes_on() const {
    return next_ < items_.size() && interruption() == 0 && !is_refused_;
  }

  BatchStartHook question() {
    if (!listener_.before_writing) return nullptr;
    return [this](const BatchStart& start) { return ask(own_socket_, start); };
  }

  // What a worker does until nobody gives it files any more.
  void answer_from(int socket) {
    for (Worker& other : workers_) other.forget();
    own_socket_ = socket;
    std::size_t index = 0;
    while (receive_packet(socket, &index, sizeof index) == sizeof index) {
      const std::string answer = packed(run_.work_on(*items_[index]));
      const bool is_told = send_packet(socket, answer.data(), answer.size()) > 0;
      if (!is_told || interruption() != 0) return;
    }
  }

  bool begin(Worker& worker, std::size_t index) {
    if (worker.is_there()) {
      if (worker.give(index)) return true;
      worker.end();  // somebody ended it while it was idle
    }
    return worker.start([this](int socket) { answer_from(socket); }) && worker.give(index);
  }

  [[nodiscard]] bool is_any_busy() const { return std::ranges::any_of(workers_, &Worker::is_busy); }

  void wait_for_one() {
    std::vector<pollfd> ready;
    for (const Worker& worker : workers_)
      ready.push_back({.fd = worker.is_busy() ? worker.descriptor() : -1, .events = POLLIN});
    if (!is_any_busy() || ::poll(ready.data(), ready.size(), -1) <= 0) return;
    for (std::size_t i = 0; i < workers_.size(); ++i) {
      if (ready[i].revents == 0) continue;
      listen_to(workers_[i]);
    }
  }

  void listen_to(Worker& worker) {
    const std::size_t index = worker.index();
    const std::string packet = worker.listen();
    if (const auto start = unpack_question(packet, items_[index]->name)) {
      const std::string refusal = listener_.before_writing(*start);
      is_refused_ = is_refused_ || !refusal.empty();
      return worker.answer(refusal);
    }
    worker.take_result(packet, results_[index]);
    know(index);
  }

  void know(std::size_t index) {
    is_known_[index] = true;
    if (!listener_.in_order) return tell(index);
    while (told_ < items_.size() && is_known_[told_]) tell(told_++);
  }

  void tell(std::size_t index) {
    is_told_[index] = true;
    listener_.tell(results_[index]);
  }

  const BatchListener& listener_;
  Editor editor_;
  BatchRun run_;         // which each worker gets a copy of
  int own_socket_ = -1;  // in a worker: the way to who gives it files
  std::vector<Worker> workers_;
  std::vector<const BatchItem*> items_;
  std::vector<BatchResult> results_;
  std::vector<bool> is_known_;
  std::vector<bool> is_told_;
  std::size_t next_ = 0;  // file to be begun
  std::size_t told_ = 0;  // files that were told in their order
  bool is_refused_ = false;
};

}  // namespace

std::vector<BatchResult> work_side_by_side(const BatchJob& job, unsigned workers,
                                           const BatchListener& listener) {
  return Workers(job, workers, listener).run();
}

}  // namespace corvelin
