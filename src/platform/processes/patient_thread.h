// SPDX-License-Identifier: GPL-2.0-or-later
// A thread for calls that may not come back for a long time: a sound server can hang, and a disk
// holds up whoever writes more than it takes. The caller waits for a while and then goes on.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace corvelin {

class PatientThread {
 public:
  PatientThread() = default;
  /// The thread does what it was given, and ends. Nobody waits for it.
  ~PatientThread();
  PatientThread(const PatientThread&) = delete;
  PatientThread& operator=(const PatientThread&) = delete;

  /// Tells works apart; 0 is one that was done before all others.
  using Ticket = std::size_t;

  /// Has `work` done behind all that was given before. It owns what it uses, unless the caller
  /// waits for it. Where the system has no thread to give it is done at once.
  Ticket give(std::function<void()> work);

  /// Whether that work is done. Waits for it no longer than told.
  [[nodiscard]] bool is_done(Ticket ticket, std::chrono::milliseconds in_time);
  void wait(Ticket ticket);

  /// False when `work` was not done in time; it may be done later.
  bool run(std::function<void()> work, std::chrono::milliseconds in_time) {
    return is_done(give(std::move(work)), in_time);
  }

 private:
  struct Queue {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> works;
    Ticket done = 0;  // all up to this one
    bool is_closed = false;
  };

  static bool start(const std::shared_ptr<Queue>& queue);
  static void serve(const std::shared_ptr<Queue>& queue);

  std::shared_ptr<Queue> queue_;  // the thread's, too: it lives on in a call that never comes back
  Ticket given_ = 0;
};

}  // namespace corvelin
