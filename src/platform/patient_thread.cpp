// The thread and its queue.
#include "platform/patient_thread.h"

#include <csignal>
#include <thread>
#include <utility>

namespace corvelin {

void PatientThread::serve(const std::shared_ptr<Queue>& queue) {
  std::unique_lock lock(queue->mutex);
  while (true) {
    queue->changed.wait(lock, [&] { return !queue->works.empty(); });
    const std::function<void()> work = std::move(queue->works.front());
    queue->works.pop_front();
    lock.unlock();
    work();
    lock.lock();
    ++queue->done;
    queue->changed.notify_all();
  }
}

bool PatientThread::run(std::function<void()> work, std::chrono::milliseconds in_time) {
  if (!queue_) {
    queue_ = std::make_shared<Queue>();
    // Signals are for the main thread, also those that come while a library's own threads run.
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread(serve, queue_).detach();
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  }
  std::unique_lock lock(queue_->mutex);
  queue_->works.push_back(std::move(work));
  queue_->changed.notify_all();
  const std::size_t number = ++given_;
  return queue_->changed.wait_for(lock, in_time, [&] { return queue_->done >= number; });
}

}  // namespace corvelin
