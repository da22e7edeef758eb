// Threads that share the parts of a piece of work.
#include "Accelerate/Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace {

using qvdevice::shareAmongWorkers;

TEST(WorkersTest, eachPartIsDoneOnceAndAllAreDoneAtTheEnd) {
  for (const std::size_t parts : {0U, 1U, 2U, 5U, 33U}) {
    for (int again = 0; again < 200; ++again) {
      std::vector<std::atomic<int>> done(parts);
      shareAmongWorkers(parts, [&](std::size_t part) { ++done[part]; });
      for (const auto& times : done) {
        ASSERT_EQ(times, 1);
      }
    }
  }
}

TEST(WorkersTest, partsAreDoneOnSeveralThreadsAtOnce) {
  // Both parts are under way together, or this never ends.
  std::atomic<int> begun = 0;
  std::mutex lock;
  std::set<std::thread::id> threads;
  shareAmongWorkers(2, [&](std::size_t) {
    ++begun;
    while (begun < 2) {
      std::this_thread::yield();
    }
    const std::lock_guard locked(lock);
    threads.insert(std::this_thread::get_id());
  });
  EXPECT_EQ(threads.size(), 2U);
}

TEST(WorkersTest, severalCallersAtOnceAllGetTheirWorkDone) {
  std::vector<std::thread> callers;
  std::atomic<int> done = 0;
  for (int caller = 0; caller < 4; ++caller) {
    callers.emplace_back([&] {
      for (int again = 0; again < 300; ++again) {
        std::atomic<int> own = 0;
        shareAmongWorkers(3, [&](std::size_t) { ++own; });
        done += own;
      }
    });
  }
  for (std::thread& caller : callers) {
    caller.join();
  }
  EXPECT_EQ(done, 4 * 300 * 3);
}

TEST(WorkersTest, aChildProcessDoesItsWorkWithoutTheParentsThreads) {
  shareAmongWorkers(3, [](std::size_t) {});
  const pid_t child = fork();
  if (child == 0) {
    alarm(20);
    std::atomic<int> done = 0;
    shareAmongWorkers(3, [&](std::size_t) { ++done; });
    _exit(done == 3 ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(WorkersTest, theAppsSignalsAreLeftToItsOwnThreads) {
  std::atomic<int> begun = 0;
  std::atomic<int> blocked = 0;
  const std::thread::id caller = std::this_thread::get_id();
  shareAmongWorkers(2, [&](std::size_t) {
    ++begun;
    while (begun < 2) {
      std::this_thread::yield();
    }
    if (std::this_thread::get_id() == caller) return;
    sigset_t set;
    pthread_sigmask(SIG_SETMASK, nullptr, &set);
    blocked = sigismember(&set, SIGTERM) + sigismember(&set, SIGCHLD) + sigismember(&set, SIGUSR1);
  });
  EXPECT_EQ(blocked, 3);
}

TEST(WorkersTest, thereIsAlwaysOneAtLeast) {
  qvdevice::setWorkerCount(0);
  EXPECT_EQ(qvdevice::workerCount(), 1U);
  qvdevice::setWorkerCount(3);
  EXPECT_EQ(qvdevice::workerCount(), 3U);
}

} // namespace
