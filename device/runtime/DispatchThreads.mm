// The threads under the queues: workers, made when they are needed and let go when they are idle, and one that waits
// for moments to come.

#include "runtime/DispatchThreads.h"

#import <Foundation/Foundation.h>

#include <array>
#include <condition_variable>
#include <queue>
#include <vector>

namespace qvdevice {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t kMostWorkers = 64;
constexpr auto kIdleTime = 5s;

class Workers {
public:
  void give(Work *work, Priority priority) {
    const std::lock_guard locked(lock_);
    lists_[static_cast<std::size_t>(priority)].push(work);
    ++waiting_;
    if (idle_ >= waiting_) {
      wake_.notify_one();
    } else if (count_ < kMostWorkers) {
      ++count_;
      std::thread([this] { serve(); }).detach();
    }
  }

private:
  void serve() {
    GSRegisterCurrentThread();
    while (Work *const work = take())
      perform(work);
    GSUnregisterCurrentThread();
  }

  /// The next work; null when there was none for a while and this thread is no longer counted.
  Work *take() {
    std::unique_lock locked(lock_);
    for (;;) {
      for (WorkList &list : lists_) {
        if (Work *const work = list.pop()) {
          --waiting_;
          return work;
        }
      }
      ++idle_;
      const bool woken = wake_.wait_for(locked, kIdleTime, [this] { return waiting_ > 0; });
      --idle_;
      if (!woken) {
        --count_;
        return nullptr;
      }
    }
  }

  std::mutex lock_;
  std::condition_variable wake_;
  std::array<WorkList, 4> lists_;
  std::size_t waiting_ = 0;
  std::size_t idle_ = 0;
  std::size_t count_ = 0;
};

struct Appointment {
  Moment moment;
  unsigned long number;
  dispatch_queue_t queue;
  Work *work;
  /// Later ones sink; of two at the same moment the one made first is first.
  bool operator<(const Appointment &other) const {
    return moment != other.moment ? moment > other.moment : number > other.number;
  }
};

class Timer {
public:
  void add(Moment moment, dispatch_queue_t queue, Work *work) {
    const std::lock_guard locked(lock_);
    appointments_.push({moment, ++made_, queue, work});
    if (!running_) {
      running_ = true;
      std::thread([this] { serve(); }).detach();
    }
    wake_.notify_one();
  }

private:
  void serve() {
    std::unique_lock locked(lock_);
    for (;;) {
      if (appointments_.empty()) {
        wake_.wait(locked);
      } else if (const Appointment next = appointments_.top(); next.moment <= std::chrono::steady_clock::now()) {
        appointments_.pop();
        next.queue->enqueue(next.work);
        dispatch_release(next.queue);
      } else {
        wake_.wait_until(locked, next.moment);
      }
    }
  }

  std::mutex lock_;
  std::condition_variable wake_;
  std::priority_queue<Appointment> appointments_;
  unsigned long made_ = 0;
  bool running_ = false;
};

} // namespace

// Neither is ever destroyed: their threads run until the process is gone.

void runOnWorkerThread(Work *work, Priority priority) {
  static Workers &workers = *new Workers;
  workers.give(work, priority);
}

void enqueueAt(Moment moment, dispatch_queue_t queue, Work *work) {
  static Timer &timer = *new Timer;
  dispatch_retain(queue);
  timer.add(moment, queue, work);
}

} // namespace qvdevice
