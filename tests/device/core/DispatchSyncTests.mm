// Once, after, times, semaphores, groups.

#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <atomic>
#include <chrono>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "Pool.h"
#include "RunLoop.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kMillisecond = static_cast<int64_t>(NSEC_PER_MSEC);

class Once : public PoolTest {};
class After : public PoolTest {};
class Time : public PoolTest {};
class Semaphore : public PoolTest {};
class Group : public PoolTest {};

TEST_F(Once, RunsOneTimeHoweverOftenItIsCalled) {
  dispatch_once_t predicate = 0;
  __block int runs = 0;
  for (int i = 0; i < 5; ++i)
    dispatch_once(&predicate, ^{
      ++runs;
    });
  EXPECT_EQ(runs, 1);
}

TEST_F(Once, CalledByManyThreadsReturnsToEachWhenItIsDone) {
  for (int round = 0; round < 50; ++round) {
    dispatch_once_t predicate = 0;
    std::atomic<int> runs{0};
    std::atomic<int> early{0};
    int value = 0;
    struct Context {
      std::atomic<int> &runs;
      int &value;
    } context{runs, value};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        dispatch_once_f(&predicate, &context, [](void *argument) {
          auto &shared = *static_cast<Context *>(argument);
          ++shared.runs;
          std::this_thread::sleep_for(std::chrono::microseconds(200));
          shared.value = 42;
        });
        if (value != 42) ++early;
      });
    }
    for (std::thread &thread : threads)
      thread.join();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(early, 0);
  }
}

TEST_F(Once, InsideAnotherRuns) {
  dispatch_once_t outer = 0;
  __block dispatch_once_t inner = 0;
  __block bool ran = false;
  dispatch_once(&outer, ^{
    dispatch_once(&inner, ^{
      ran = true;
    });
  });
  EXPECT_TRUE(ran);
}

TEST_F(After, RunsNotBeforeItsTimeAndInTheOrderOfTheTimes) {
  __block std::string order;
  const auto start = Clock::now();
  // Of one moment, and far apart: a slow machine needs its time between the two calls.
  const dispatch_time_t now = dispatch_time(DISPATCH_TIME_NOW, 0);
  __block Clock::time_point last;
  dispatch_after(dispatch_time(now, 1000 * kMillisecond), dispatch_get_main_queue(), ^{
    order += "2";
    last = Clock::now();
  });
  dispatch_after(dispatch_time(now, 40 * kMillisecond), dispatch_get_main_queue(), ^{
    order += "1";
  });
  ASSERT_TRUE(runLoopUntil(^{
    return order.size() == 2;
  }));
  EXPECT_EQ(order, "12");
  EXPECT_GE(last - start, std::chrono::milliseconds(1000));
}

TEST_F(After, ATimeInThePastRunsSoon) {
  __block bool ran = false;
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, -1000 * kMillisecond), dispatch_get_main_queue(), ^{
    ran = true;
  });
  EXPECT_TRUE(runLoopUntil(^{
    return ran;
  }));
}

TEST_F(After, AWallClockTimeRuns) {
  __block bool ran = false;
  const auto start = Clock::now();
  dispatch_after(dispatch_walltime(nullptr, 50 * kMillisecond), dispatch_get_main_queue(), ^{
    ran = true;
  });
  EXPECT_TRUE(runLoopUntil(^{
    return ran;
  }));
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(45));
}

TEST_F(After, AQueueThatWasReleasedRunsIt) {
  dispatch_semaphore_t done = dispatch_semaphore_create(0);
  dispatch_queue_t queue = dispatch_queue_create("serial", DISPATCH_QUEUE_SERIAL);
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, 10 * kMillisecond), queue, ^{
    dispatch_semaphore_signal(done);
  });
  dispatch_release(queue);
  EXPECT_EQ(dispatch_semaphore_wait(done, dispatch_time(DISPATCH_TIME_NOW, 10000 * kMillisecond)), 0);
  dispatch_release(done);
}

TEST_F(Time, SumsAndNeverPassesForever) {
  const dispatch_time_t now = dispatch_time(DISPATCH_TIME_NOW, 0);
  EXPECT_EQ(dispatch_time(now, 5) - now, 5U);
  EXPECT_EQ(dispatch_time(DISPATCH_TIME_FOREVER, 5), DISPATCH_TIME_FOREVER);
  EXPECT_EQ(dispatch_time(now, INT64_MAX), DISPATCH_TIME_FOREVER);
  EXPECT_EQ(dispatch_time(now, INT64_MIN), 1U);
  timespec wall{100, 7};
  EXPECT_EQ(dispatch_walltime(&wall, 3), ~(100 * NSEC_PER_SEC + 10) + 1);
  EXPECT_EQ(dispatch_time(dispatch_walltime(&wall, 3), 5), dispatch_walltime(&wall, 8));
}

TEST_F(Semaphore, WaitsUntilSignalledAndNoLongerThanItsTime) {
  dispatch_semaphore_t semaphore = dispatch_semaphore_create(1);
  EXPECT_EQ(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_FOREVER), 0);
  EXPECT_NE(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_NOW), 0);
  EXPECT_NE(dispatch_semaphore_wait(semaphore, dispatch_time(DISPATCH_TIME_NOW, 20 * kMillisecond)), 0);
  std::thread signaller([semaphore] { dispatch_semaphore_signal(semaphore); });
  EXPECT_EQ(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_FOREVER), 0);
  signaller.join();
  dispatch_release(semaphore);
}

TEST_F(Semaphore, CannotBeginBelowZero) { EXPECT_EQ(dispatch_semaphore_create(-1), nullptr); }

TEST_F(Group, NotifiesWhenAllHaveLeft) {
  dispatch_group_t group = dispatch_group_create();
  std::atomic<int> doneHere{0};
  std::atomic<int> *const done = &doneHere;
  __block int seen = -1;
  for (int i = 0; i < 10; ++i)
    dispatch_group_async(group, dispatch_get_global_queue(0, 0), ^{
      ++*done;
    });
  dispatch_group_notify(group, dispatch_get_main_queue(), ^{
    seen = *done;
  });
  EXPECT_TRUE(runLoopUntil(^{
    return seen >= 0;
  }));
  EXPECT_EQ(seen, 10);
  dispatch_release(group);
}

TEST_F(Group, NobodyEnteredNotifiesAtOnceAndWaitsForNothing) {
  dispatch_group_t group = dispatch_group_create();
  __block bool notified = false;
  EXPECT_EQ(dispatch_group_wait(group, DISPATCH_TIME_NOW), 0);
  dispatch_group_notify(group, dispatch_get_main_queue(), ^{
    notified = true;
  });
  EXPECT_TRUE(runLoopUntil(^{
    return notified;
  }));
  dispatch_release(group);
}

TEST_F(Group, ThatIsEnteredTimesOut) {
  dispatch_group_t group = dispatch_group_create();
  dispatch_group_enter(group);
  EXPECT_NE(dispatch_group_wait(group, dispatch_time(DISPATCH_TIME_NOW, 10 * kMillisecond)), 0);
  dispatch_group_leave(group);
  EXPECT_EQ(dispatch_group_wait(group, DISPATCH_TIME_FOREVER), 0);
  dispatch_release(group);
}

} // namespace
