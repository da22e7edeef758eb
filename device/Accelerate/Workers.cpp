#include "Accelerate/Workers.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <csignal>
#include <exception>
#include <mutex>
#include <new>
#include <thread>

#include <sched.h>
#include <unistd.h>

namespace qvdevice {

namespace {

/// The parts of one image. It is on the stack of the thread that waits for them.
struct Job {
  const std::function<void(std::size_t)>& work;
  std::size_t parts;
  std::atomic<std::size_t> next = 0;

  void help() {
    for (std::size_t part = next++; part < parts; part = next++) {
      work(part);
    }
  }
};

class Workers {
public:
  void share(std::size_t parts, const std::function<void(std::size_t)>& work) {
    Job job{.work = work, .parts = parts};
    const std::unique_lock mine(inUse_, std::try_to_lock);
    if (mine) begin(job);
    job.help();
    if (mine) end();
  }

private:
  void begin(Job& job) {
    const std::lock_guard locked(lock_);
    try {
      for (; threads_ + 1 < job.parts; ++threads_) {
        startThread();
      }
    } catch (const std::exception&) {
      // There is no thread to be had, or no memory for one: those that there are do the work.
    }
    job_ = &job;
    wanted_ = job.parts - 1;
    wake_.notify_all();
  }

  /// Nobody looks at the job any longer when this returns.
  void end() {
    std::unique_lock locked(lock_);
    job_ = nullptr;
    wanted_ = 0;
    done_.wait(locked, [this] { return helping_ == 0; });
  }

  /// A thread that takes none of the app's signals.
  void startThread() {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
      std::thread([this] { serve(); }).detach();
    } catch (...) {
      pthread_sigmask(SIG_SETMASK, &before, nullptr);
      throw;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
  }

  [[noreturn]] void serve() {
    std::unique_lock locked(lock_);
    while (true) {
      wake_.wait(locked, [this] { return wanted_ > 0; });
      --wanted_;
      ++helping_;
      Job& job = *job_;
      locked.unlock();
      job.help();
      locked.lock();
      if (--helping_ == 0) done_.notify_all();
    }
  }

  std::mutex inUse_;
  std::mutex lock_;
  std::condition_variable wake_;
  std::condition_variable done_;
  Job* job_ = nullptr;
  std::size_t wanted_ = 0;
  std::size_t helping_ = 0;
  std::size_t threads_ = 0;
};

std::size_t processors() {
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) != 0) return 1;
  return static_cast<std::size_t>(std::max(CPU_COUNT(&set), 1));
}

std::atomic<std::size_t>& count() {
  static std::atomic<std::size_t> workers = processors();
  return workers;
}

} // namespace

std::size_t workerCount() { return count(); }

void setWorkerCount(std::size_t workers) { count() = std::max<std::size_t>(workers, 1); }

void shareAmongWorkers(std::size_t parts, const std::function<void(std::size_t)>& work) {
  // Never destroyed: its threads wait until the process ends.
  alignas(Workers) static std::byte memory[sizeof(Workers)];
  static auto& workers = *new (memory) Workers;
  static const pid_t owner = getpid();
  // A child made by fork() has the memory without the threads.
  if (parts > 1 && getpid() == owner) {
    workers.share(parts, work);
    return;
  }
  for (std::size_t part = 0; part < parts; ++part) {
    work(part);
  }
}

} // namespace qvdevice
