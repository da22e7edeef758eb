// Queues: what runs where, and in which order.

#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <atomic>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "Child.h"
#include "Pool.h"
#include "RunLoop.h"

namespace {

class Dispatch : public PoolTest {};

TEST_F(Dispatch, ToTheMainQueueRunsOnTheMainThreadWhenTheRunLoopTurns) {
  __block bool ran = false;
  __block bool onMain = false;
  dispatch_async(dispatch_get_main_queue(), ^{
    onMain = [NSThread isMainThread];
    ran = true;
  });
  EXPECT_FALSE(ran);
  ASSERT_TRUE(runLoopUntil(^{
    return ran;
  }));
  EXPECT_TRUE(onMain);
}

TEST_F(Dispatch, ToTheMainQueueFromAnotherThreadWakesTheRunLoop) {
  std::atomic<bool> ranHere{false};
  std::atomic<bool> *const ran = &ranHere;
  std::thread sender([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    dispatch_async_f(&_dispatch_main_q, ran, [](void *flag) { *static_cast<std::atomic<bool> *>(flag) = true; });
  });
  NSDate *const start = [NSDate date];
  [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:10]];
  EXPECT_LT([[NSDate date] timeIntervalSinceDate:start], 5);
  EXPECT_TRUE(*ran);
  sender.join();
}

TEST_F(Dispatch, ToTheMainQueueKeepsTheOrder) {
  __block std::string order;
  for (char c = 'a'; c <= 'z'; ++c) {
    dispatch_async(dispatch_get_main_queue(), ^{
      order += c;
    });
  }
  ASSERT_TRUE(runLoopUntil(^{
    return order.size() == 26;
  }));
  EXPECT_EQ(order, "abcdefghijklmnopqrstuvwxyz");
}

TEST_F(Dispatch, FromAMainQueueBlockRunsOnALaterTurnAfterTheOthers) {
  __block std::string order;
  dispatch_async(dispatch_get_main_queue(), ^{
    dispatch_async(dispatch_get_main_queue(), ^{
      order += "3";
    });
    order += "1";
  });
  dispatch_async(dispatch_get_main_queue(), ^{
    order += "2";
  });
  ASSERT_TRUE(runLoopUntil(^{
    return order.size() == 3;
  }));
  EXPECT_EQ(order, "123");
}

TEST_F(Dispatch, ToTheMainQueueWaitsForTheBlockThatTurnsTheRunLoopItself) {
  __block std::string order;
  dispatch_async(dispatch_get_main_queue(), ^{
    order += "<";
    [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.1]];
    order += ">";
  });
  dispatch_async(dispatch_get_main_queue(), ^{
    order += "x";
  });
  ASSERT_TRUE(runLoopUntil(^{
    return order.size() == 3;
  }));
  EXPECT_EQ(order, "<>x");
}

TEST_F(Dispatch, BlocksHaveAnAutoreleasePoolEach) {
  __block NSUInteger count = 0;
  NSObject *const object = [[NSObject alloc] init];
  dispatch_async(dispatch_get_main_queue(), ^{
    [[object retain] autorelease];
  });
  dispatch_async(dispatch_get_main_queue(), ^{
    count = [object retainCount];
  });
  ASSERT_TRUE(runLoopUntil(^{
    return count != 0;
  }));
  // The test's own and that of the block which counts.
  EXPECT_EQ(count, 2U);
  [object release];
}

TEST_F(Dispatch, ToAGlobalQueueRunsOffTheMainThread) {
  dispatch_semaphore_t done = dispatch_semaphore_create(0);
  __block bool onMain = true;
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
    onMain = [NSThread isMainThread];
    dispatch_semaphore_signal(done);
  });
  EXPECT_EQ(dispatch_semaphore_wait(done, dispatch_time(DISPATCH_TIME_NOW, 10 * static_cast<int64_t>(NSEC_PER_SEC))),
            0);
  EXPECT_FALSE(onMain);
  dispatch_release(done);
}

TEST_F(Dispatch, ToAGlobalQueueRunsManyBlocksAtOnce) {
  constexpr int kBlocks = 16;
  dispatch_group_t group = dispatch_group_create();
  std::atomic<int> metHere{0};
  std::atomic<int> *const met = &metHere;
  for (int i = 0; i < kBlocks; ++i) {
    dispatch_group_async(group, dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_HIGH, 0), ^{
      ++*met;
      // Each waits for all the others: they end only when all run at the same time.
      while (*met < kBlocks)
        std::this_thread::yield();
    });
  }
  EXPECT_EQ(dispatch_group_wait(group, dispatch_time(DISPATCH_TIME_NOW, 10 * static_cast<int64_t>(NSEC_PER_SEC))), 0);
  dispatch_release(group);
}

TEST_F(Dispatch, GlobalQueuesAreOnePerPriorityAndNoneForOthers) {
  EXPECT_EQ(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_LOW, 0),
            dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_LOW, 0));
  EXPECT_NE(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_LOW, 0),
            dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_HIGH, 0));
  EXPECT_NE(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_BACKGROUND, 0), nullptr);
  EXPECT_EQ(dispatch_get_global_queue(17, 0), nullptr);
  EXPECT_EQ(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 1), nullptr);
}

TEST_F(Dispatch, ToASerialQueueRunsOneBlockAtATimeInOrder) {
  dispatch_queue_t queue = dispatch_queue_create("com.example.serial", DISPATCH_QUEUE_SERIAL);
  EXPECT_STREQ(dispatch_queue_get_label(queue), "com.example.serial");
  __block std::vector<int> order;
  std::atomic<int> insideHere{0};
  std::atomic<int> *const inside = &insideHere;
  __block bool overlapped = false;
  for (int i = 0; i < 1000; ++i) {
    dispatch_async(queue, ^{
      overlapped = overlapped || ++*inside != 1;
      order.push_back(i);
      --*inside;
    });
  }
  dispatch_sync(queue, ^{
    order.push_back(1000);
  });
  ASSERT_EQ(order.size(), 1001U);
  for (int i = 0; i <= 1000; ++i)
    EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
  EXPECT_FALSE(overlapped);
  dispatch_release(queue);
}

TEST_F(Dispatch, ReleasedSerialQueueRunsWhatItWasGiven) {
  dispatch_semaphore_t done = dispatch_semaphore_create(0);
  dispatch_queue_t queue = dispatch_queue_create(nullptr, DISPATCH_QUEUE_SERIAL);
  for (int i = 0; i < 100; ++i)
    dispatch_async(queue, ^{
      std::this_thread::yield();
    });
  dispatch_async(queue, ^{
    dispatch_semaphore_signal(done);
  });
  dispatch_release(queue);
  EXPECT_EQ(dispatch_semaphore_wait(done, dispatch_time(DISPATCH_TIME_NOW, 10 * static_cast<int64_t>(NSEC_PER_SEC))),
            0);
  dispatch_release(done);
}

TEST_F(Dispatch, SyncOnASerialQueueIsDoneWhenItReturns) {
  dispatch_queue_t queue = dispatch_queue_create("serial", DISPATCH_QUEUE_SERIAL);
  int sum = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&, queue] {
      for (int round = 0; round < 500; ++round) {
        dispatch_sync_f(queue, &sum, [](void *total) { ++*static_cast<int *>(total); });
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_EQ(sum, 2000);
  dispatch_release(queue);
}

TEST_F(Dispatch, SyncOnAGlobalQueueRunsOnTheCallingThread) {
  __block std::thread::id ran;
  dispatch_sync(dispatch_get_global_queue(0, 0), ^{
    ran = std::this_thread::get_id();
  });
  EXPECT_EQ(ran, std::this_thread::get_id());
}

TEST_F(Dispatch, SyncOnTheMainQueueFromAnotherThreadRunsOnTheMainThread) {
  __block bool onMain = false;
  std::atomic<bool> returnedHere{false};
  std::atomic<bool> *const returned = &returnedHere;
  dispatch_async(dispatch_get_global_queue(0, 0), ^{
    dispatch_sync(dispatch_get_main_queue(), ^{
      onMain = [NSThread isMainThread];
    });
    *returned = true;
  });
  ASSERT_TRUE(runLoopUntil(^{
    return returned->load();
  }));
  EXPECT_TRUE(onMain);
}

TEST_F(Dispatch, ConcurrentQueueRunsBlocksAtOnce) {
  dispatch_queue_t queue = dispatch_queue_create("concurrent", DISPATCH_QUEUE_CONCURRENT);
  dispatch_group_t group = dispatch_group_create();
  std::atomic<int> metHere{0};
  std::atomic<int> *const met = &metHere;
  for (int i = 0; i < 2; ++i) {
    dispatch_group_async(group, queue, ^{
      ++*met;
      while (*met < 2)
        std::this_thread::yield();
    });
  }
  EXPECT_EQ(dispatch_group_wait(group, dispatch_time(DISPATCH_TIME_NOW, 10 * static_cast<int64_t>(NSEC_PER_SEC))), 0);
  dispatch_release(group);
  dispatch_release(queue);
}

constexpr char kOwnedQueue[] =
    "BUG IN CLIENT OF LIBDISPATCH: dispatch_sync called on queue already owned by current thread\n";

TEST_F(Dispatch, SyncOnTheMainQueueFromTheMainThreadEndsTheProcess) {
  const ChildResult result = runStarter({"sync-on-main"}, {{"QVDEVICE_CONTAINER", freshFolder()}});
  EXPECT_EQ(result.status, 128 + SIGABRT);
  EXPECT_EQ(result.errors, kOwnedQueue);
}

TEST_F(Dispatch, SyncOnASerialQueueFromItselfEndsTheProcess) {
  const ChildResult result = runStarter({"sync-on-itself"}, {{"QVDEVICE_CONTAINER", freshFolder()}});
  EXPECT_EQ(result.status, 128 + SIGABRT);
  EXPECT_EQ(result.errors, kOwnedQueue);
}

} // namespace
