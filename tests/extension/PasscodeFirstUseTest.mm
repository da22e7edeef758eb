// The first use of the manager. It is once a process, so each of these tests needs one of its own.
#include "ExtensionTest.h"

#include <objc/runtime.h>

#include <atomic>
#include <barrier>
#include <chrono>
#include <set>
#include <thread>

namespace {

using PasscodeFirstUse = ExtensionTest;

std::atomic<int> made;
IMP initPrivate = nullptr;

id makeSlowly(id self, SEL selector) {
  ++made;
  // Time for the others to come.
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  return reinterpret_cast<id (*)(id, SEL)>(initPrivate)(self, selector);
}

/// Counts the managers that are made, from here on.
void countManagers(Class managers) {
  initPrivate = class_getMethodImplementation(managers, @selector(initPrivate));
  replaceMethod(managers, "initPrivate", reinterpret_cast<IMP>(&makeSlowly));
}

} // namespace

TEST_F(PasscodeFirstUse, ByManyThreadsAtOnceMakesOneManager) {
  countManagers(managerClass());
  constexpr int kThreads = 8;
  std::barrier ready(kThreads);
  id given[kThreads] = {};
  std::vector<std::thread> threads;
  for (id &mine : given)
    threads.emplace_back([&ready, &mine] {
      NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
      Class const managers = managerClass();
      ready.arrive_and_wait();
      mine = [managers sharedInstance];
      [pool drain];
    });
  for (std::thread &each : threads)
    each.join();
  EXPECT_EQ(made, 1);
  EXPECT_NE(given[0], nil);
  EXPECT_EQ(std::set<id>(std::begin(given), std::end(given)).size(), 1u);
}

TEST_F(PasscodeFirstUse, OfASubclassMakesOneOfThatClassForAll) {
  countManagers(managerClass());
  Class const subclass = objc_allocateClassPair(managerClass(), "QVTestManager", 0);
  objc_registerClassPair(subclass);
  const id<QVPasscodeManager> shared = [subclass sharedInstance];
  ASSERT_NE(shared, nil);
  EXPECT_EQ([(id)shared class], subclass);
  EXPECT_EQ([managerClass() sharedInstance], shared);
  EXPECT_EQ([subclass sharedInstance], shared);
  EXPECT_EQ(made, 1);
  [shared start];
  EXPECT_EQ([shared isPasscodeExtensionActive], YES);
  turnMainQueue();
  EXPECT_NE([shared extensionWindow], nil);
}
