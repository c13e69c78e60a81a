// A thread for calls into libraries that may not come back for a long time, as a sound server that
// hangs holds up whoever talks to it. The caller waits for a while and then goes on without.
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
  /// Does `work` behind all that was given before. False when it was not done in time; it may be
  /// done later, so it owns what it uses.
  bool run(std::function<void()> work, std::chrono::milliseconds in_time);

 private:
  struct Queue {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> works;
    std::size_t done = 0;  // in all
  };

  static void serve(const std::shared_ptr<Queue>& queue);

  std::shared_ptr<Queue> queue_;  // the thread's, too: it lives on in a call that never comes back
  std::size_t given_ = 0;
};

}  // namespace corvelin
