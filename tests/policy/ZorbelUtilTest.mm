// The one object, and what it keeps.
#include "Policy.h"

#include <objc/runtime.h>

#include <atomic>
#include <thread>

namespace {

using Shared = Policy;

Class utilClass() { return NSClassFromString(@"ZorbelUtil"); }

} // namespace

TEST(SharedByThreads, IsTheSameObjectWhoeverIsFirst) {
  std::atomic<bool> go{false};
  std::vector<id> seen(8);
  std::vector<std::thread> threads;
  for (id &mine : seen) {
    threads.emplace_back([&] {
      while (!go) {
      }
      mine = [utilClass() instance];
    });
  }
  go = true;
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_NE(seen[0], nil);
  for (id object : seen)
    EXPECT_EQ(object, seen[0]);
}

TEST_F(Shared, IsADirectSubclassOfNSObjectAndAlwaysTheSame) {
  EXPECT_STREQ(class_getName(class_getSuperclass(utilClass())), "NSObject");
  EXPECT_EQ([utilClass() instance], util);
  EXPECT_EQ([(id)util class], utilClass());
}

TEST_F(Shared, IsNotWhatASecondAllocAndInitGives) {
  id const second = [[utilClass() alloc] init];
  EXPECT_NE(second, nil);
  EXPECT_NE(second, util);
  EXPECT_EQ([utilClass() instance], util);
  [second release];
}

TEST_F(Shared, IsInitialisedOnlyOnce) {
  [util setRegisteredForPasteboardChangeNotification:YES];
  EXPECT_EQ([(id)util init], util);
  EXPECT_EQ([util registeredForPasteboardChangeNotification], YES);
  EXPECT_EQ([util zorbel], sdk);
}

TEST_F(Shared, IsAlsoWhatASubclassGivesAndTheSubclassDoesNotReplaceIt) {
  Class const subclass = objc_allocateClassPair(utilClass(), "QVTestUtilSubclass", 0);
  objc_registerClassPair(subclass);
  EXPECT_EQ([subclass instance], util);
  EXPECT_EQ([utilClass() instance], util);
  EXPECT_EQ([(id)util class], utilClass());
}

TEST_F(Shared, KeepsWhatItsPropertiesAreSetTo) {
  EXPECT_EQ([util registeredForPasteboardChangeNotification], NO);
  [util setRegisteredForPasteboardChangeNotification:YES];
  EXPECT_EQ([util registeredForPasteboardChangeNotification], YES);
  [util setRegisteredForPasteboardChangeNotification:NO];
  EXPECT_EQ([util registeredForPasteboardChangeNotification], NO);

  EXPECT_EQ([util pasteboardProxyForwardInvocationReturnAddress], 0);
  [util setPasteboardProxyForwardInvocationReturnAddress:-0x123456789abcdef0];
  EXPECT_EQ([util pasteboardProxyForwardInvocationReturnAddress], -0x123456789abcdef0);

  EXPECT_EQ([util zorbel], sdk);
  [util setZorbel:nil];
  EXPECT_EQ([util zorbel], nil);
}

TEST_F(Shared, HasMethodsOfTheStatedSignatures) {
  const struct {
    const char *selector;
    const char *types;
  } methods[] = {
      {"allowsPasteboard", "C16@0:8"},
      {"allowsPrinting", "C16@0:8"},
      {"allowsOpenInWithAppId:", "C24@0:8@16"},
      {"_whitelistApprovedAppId:", "C24@0:8@16"},
      {"_doesAppID:matchPattern:", "C32@0:8@16@24"},
      {"mergeExcludedActivityTypes:", "@24@0:8@16"},
      {"resetInactivity:", "v24@0:8@16"},
      {"wipeApplication", "v16@0:8"},
      {"takeSnapshot", "v16@0:8"},
      {"restoreSnapshot", "v16@0:8"},
      {"_snapshotPasteboard", "v16@0:8"},
      {"_restorePasteboardSnapshot", "v16@0:8"},
      {"_isZorbelItem:", "C24@0:8@16"},
      {"_zorbelItems:", "@24@0:8@16"},
      {"pasteboardContentChanged:", "v24@0:8@16"},
      {"isPasscodeExtensionActive", "C16@0:8"},
      {"canAppDisplayPasscodeExtension", "C16@0:8"},
      {"startPasscodeExtension", "v16@0:8"},
      {"stopPasscodeExtension", "v16@0:8"},
      {"getAppInfo", "@16@0:8"},
      {"postPasscodeExtensionResult:", "v24@0:8@16"},
      {"zorbel", "@16@0:8"},
      {"setZorbel:", "v24@0:8@16"},
      {"registeredForPasteboardChangeNotification", "C16@0:8"},
      {"setRegisteredForPasteboardChangeNotification:", "v20@0:8C16"},
      {"pasteboardProxyForwardInvocationReturnAddress", "q16@0:8"},
      {"setPasteboardProxyForwardInvocationReturnAddress:", "v24@0:8q16"},
  };
  for (const auto &method : methods) {
    const Method found = class_getInstanceMethod(utilClass(), sel_registerName(method.selector));
    ASSERT_TRUE(found != nullptr) << method.selector;
    EXPECT_STREQ(method_getTypeEncoding(found), method.types) << method.selector;
  }
}
