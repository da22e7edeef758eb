// Start, stop and the question whether the extension is active, from many threads.
#include "PasscodeManager.h"

#include <algorithm>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace {

class PasscodeThreads : public PasscodeManager {
protected:
  static constexpr int kThreads = 8;
  static constexpr int kTurns = 300;

  /// Runs the work on several threads at once, to its end.
  static void everywhere(const std::function<void(int)> &work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
      threads.emplace_back([&work, i] {
        for (int turn = 0; turn < kTurns; ++turn) {
          NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
          work(i + turn);
          [pool drain];
        }
      });
    for (std::thread &each : threads)
      each.join();
  }

  static int count(const Lines &lines, const std::string &line) {
    return static_cast<int>(std::count(lines.begin(), lines.end(), line));
  }
};

} // namespace

TEST_F(PasscodeThreads, ThatAllStartAtOnceStartItOnce) {
  everywhere([this](int) { [passcode start]; });
  const Lines heard = take();
  EXPECT_EQ(count(heard, "sdk getAppInfo"), 1);
  EXPECT_EQ(count(heard, kBusy), kThreads * kTurns - 1);
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"displayExtension"});
  [passcode stop];
  EXPECT_TRUE([window isKeyWindow]);
}

TEST_F(PasscodeThreads, ThatStartStopAndAskBeforeAnythingIsShownLeaveItAsTheLastOneSaid) {
  everywhere([this](int turn) {
    switch (turn % 3) {
    case 0:
      [passcode start];
      break;
    case 1:
      [passcode stop];
      break;
    default:
      [passcode isPasscodeExtensionActive];
    }
  });
  [passcode stop];
  take();
  turnMainQueue();
  EXPECT_EQ(take(), Lines{});
  EXPECT_EQ([passcode isPasscodeExtensionActive], NO);
  EXPECT_TRUE([window isKeyWindow]);
}

TEST_F(PasscodeThreads, ThatStartAndAskWhileTheMainThreadStopsFindItWhole) {
  std::atomic<bool> done = false;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([&, i] {
      while (!done) {
        NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
        if (i % 2)
          [passcode start];
        else
          [passcode isPasscodeExtensionActive];
        [pool drain];
      }
    });
  for (int round = 0; round < 100; ++round) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    turnMainQueue();
    [passcode stop];
    [pool drain];
  }
  done = true;
  for (std::thread &each : threads)
    each.join();
  [passcode stop];
  turnMainQueue();
  EXPECT_EQ([passcode isPasscodeExtensionActive], NO);
  EXPECT_TRUE([window isKeyWindow]);
}

TEST_F(PasscodeThreads, ThatHoldTheLockOnTheManagerKeepOthersFromStartingStoppingAndAsking) {
  const std::function<void()> calls[] = {
      [this] { [passcode start]; },
      [this] { [passcode isPasscodeExtensionActive]; },
      [this] { [passcode stop]; },
  };
  for (const std::function<void()> &call : calls) {
    std::atomic<bool> returned = false;
    std::thread other;
    @synchronized(passcode) {
      other = std::thread([&] {
        NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
        call();
        returned = true;
        [pool drain];
      });
      // It is recursive.
      [passcode isPasscodeExtensionActive];
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      EXPECT_FALSE(returned);
    }
    other.join();
    EXPECT_TRUE(returned);
  }
}

TEST_F(PasscodeThreads, MayAskWhileTheWindowIsBeingShown) {
  // The window is shown outside the lock: a host that waits there for another thread does not wait for ever.
  static std::atomic<int> answer;
  answer = -1;
  replaceMethod(windowControllerClass(), "displayExtension", reinterpret_cast<IMP>(+[](id, SEL) {
                  std::thread([] { answer = [manager() isPasscodeExtensionActive]; }).join();
                }));
  [passcode start];
  turnMainQueue();
  EXPECT_EQ(answer, 1);
}
