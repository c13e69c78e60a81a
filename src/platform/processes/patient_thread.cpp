// SPDX-License-Identifier: GPL-2.0-or-later
// The thread and its queue.
#include "platform/processes/patient_thread.h"

#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

namespace corvelin {

void PatientThread::serve(const std::shared_ptr<Queue>& queue) {
  std::unique_lock lock(queue->mutex);
  while (true) {
    queue->changed.wait(lock, [&] { return !queue->works.empty() || queue->is_closed; });
    if (queue->works.empty()) return;
    std::function<void()> work = std::move(queue->works.front());
    queue->works.pop_front();
    lock.unlock();
    work();
    work = nullptr;  // what it owns may take as long to go
    lock.lock();
    ++queue->done;
    queue->changed.notify_all();
  }
}

// Signals are for the main thread, also those that come while a library's own threads run.
bool PatientThread::start(const std::shared_ptr<Queue>& queue) {
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  bool is_started = true;
  try {
    std::thread(serve, queue).detach();
  } catch (const std::system_error&) {
    is_started = false;
  }
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return is_started;
}

PatientThread::~PatientThread() {
  if (!queue_) return;
  const std::lock_guard lock(queue_->mutex);
  queue_->is_closed = true;
  queue_->changed.notify_all();
}

PatientThread::Ticket PatientThread::give(std::function<void()> work) {
  if (!queue_) {
    auto queue = std::make_shared<Queue>();
    if (!start(queue)) {
      work();
      return 0;
    }
    queue_ = std::move(queue);
  }
  const std::lock_guard lock(queue_->mutex);
  queue_->works.push_back(std::move(work));
  queue_->changed.notify_all();
  return ++given_;
}

bool PatientThread::is_done(Ticket ticket, std::chrono::milliseconds in_time) {
  if (ticket == 0) return true;
  std::unique_lock lock(queue_->mutex);
  return queue_->changed.wait_for(lock, in_time, [&] { return queue_->done >= ticket; });
}

void PatientThread::wait(Ticket ticket) {
  if (ticket == 0) return;
  std::unique_lock lock(queue_->mutex);
  queue_->changed.wait(lock, [&] { return queue_->done >= ticket; });
}

}  // namespace corvelin
