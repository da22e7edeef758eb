// What the policy object hands on to others.
#include "Policy.h"

#include <objc/runtime.h>

namespace {

using Forwards = Policy;

std::vector<std::string> calls;
BOOL answer = NO;

void note(id, SEL selector) { calls.push_back(sel_getName(selector)); }
BOOL noteAndAnswer(id self, SEL selector) {
  note(self, selector);
  return answer;
}
void noteAndRaise(id self, SEL selector) {
  note(self, selector);
  [NSException raise:@"Host" format:@"%s", sel_getName(selector)];
}

/// The library's own manager, which notes what it is asked and does nothing.
void watchManager() {
  Class const cls = NSClassFromString(@"QVSBPasscodeExtensionManager");
  const std::pair<const char *, IMP> methods[] = {
      {"isPasscodeExtensionActive", (IMP)noteAndAnswer},
      {"canAppDisplayPasscodeExtension", (IMP)noteAndAnswer},
      {"start", (IMP)note},
      {"stop", (IMP)note},
  };
  for (const auto &[selector, implementation] : methods) {
    const Method method = class_getInstanceMethod(cls, sel_registerName(selector));
    ASSERT_TRUE(method != nullptr) << selector;
    method_setImplementation(method, implementation);
  }
}

} // namespace

TEST_F(Forwards, ReachThePasscodeExtensionWhetherOrNotTheSDKIsReady) {
  watchManager();
  for (const BOOL ready : {YES, NO}) {
    sdk->ready = ready;
    calls.clear();
    for (const BOOL expected : {YES, NO}) {
      answer = expected;
      EXPECT_EQ([util isPasscodeExtensionActive], expected);
      EXPECT_EQ([util canAppDisplayPasscodeExtension], expected);
    }
    [util startPasscodeExtension];
    [util stopPasscodeExtension];
    EXPECT_EQ(calls, (std::vector<std::string>{"isPasscodeExtensionActive", "canAppDisplayPasscodeExtension",
                                               "isPasscodeExtensionActive", "canAppDisplayPasscodeExtension", "start",
                                               "stop"}));
  }
}

TEST_F(Forwards, GiveTheAppInformationAsTheSDKHasItWhetherOrNotItIsReady) {
  sdk->appInfo = [@{@"ActivityPasteboardKey" : @"key"} retain];
  EXPECT_EQ([util getAppInfo], sdk -> appInfo);
  sdk->ready = NO;
  EXPECT_EQ([util getAppInfo], sdk -> appInfo);
  [sdk->appInfo release];
  sdk->appInfo = nil;
  EXPECT_EQ([util getAppInfo], nil);
  [util setZorbel:nil];
  EXPECT_EQ([util getAppInfo], nil);
}

TEST_F(Forwards, HandThePasscodeResultToTheSDKUnchangedWhetherOrNotItIsReady) {
  NSDictionary *const result = @{@"a" : @1};
  [util postPasscodeExtensionResult:result];
  sdk->ready = NO;
  [util postPasscodeExtensionResult:nil];
  ASSERT_EQ([sdk->results count], 2u);
  EXPECT_EQ([sdk->results objectAtIndex:0], result);
  EXPECT_EQ([sdk->results objectAtIndex:1], [NSNull null]);
  [util setZorbel:nil];
  [util postPasscodeExtensionResult:result];
  EXPECT_EQ([sdk->results count], 2u);
}

TEST_F(Forwards, HandEventsToAnSDKThatIsReadyAndToNoOther) {
  UIEvent *const event = [[[UIEvent alloc] init] autorelease];
  [util resetInactivity:event];
  ASSERT_EQ([sdk->events count], 1u);
  EXPECT_EQ([sdk->events objectAtIndex:0], event);
  sdk->ready = NO;
  [util resetInactivity:event];
  EXPECT_EQ([sdk->events count], 1u);
  sdk->ready = YES;
  [util resetInactivity:nil];
  ASSERT_EQ([sdk->events count], 2u);
  EXPECT_EQ([sdk->events objectAtIndex:1], [NSNull null]);
  [util setZorbel:nil];
  [util resetInactivity:event];
  EXPECT_EQ([sdk->events count], 2u);
  releaseSDK();
  [util resetInactivity:event];
}

TEST_F(Forwards, WipeKeychainThenPreferencesThenFilesWithoutAnSDKToo) {
  Class const meta = object_getClass(NSClassFromString(@"ZorbelUtil"));
  for (const char *step : {"_cleanUpKeychain", "_cleanUpPreferences", "_cleanUpFileSystem"}) {
    const Method method = class_getInstanceMethod(meta, sel_registerName(step));
    ASSERT_TRUE(method != nullptr) << step;
    EXPECT_STREQ(method_getTypeEncoding(method), "v16@0:8");
    method_setImplementation(method, (IMP)note);
  }
  const std::vector<std::string> expected = {"_cleanUpKeychain", "_cleanUpPreferences", "_cleanUpFileSystem"};
  calls.clear();
  [util wipeApplication];
  EXPECT_EQ(calls, expected);
  [util setZorbel:nil];
  calls.clear();
  [util wipeApplication];
  EXPECT_EQ(calls, expected);
}

TEST_F(Forwards, WipeToTheEndWhenAStepRaisesAndLetTheExceptionGoOn) {
  Class const meta = object_getClass(NSClassFromString(@"ZorbelUtil"));
  const std::vector<std::string> steps = {"_cleanUpKeychain", "_cleanUpPreferences", "_cleanUpFileSystem"};
  for (const std::string &raising : steps) {
    for (const std::string &step : steps)
      method_setImplementation(class_getInstanceMethod(meta, sel_registerName(step.c_str())),
                               step == raising ? (IMP)noteAndRaise : (IMP)note);
    calls.clear();
    std::string reason;
    @try {
      [util wipeApplication];
    } @catch (NSException *exception) {
      reason = [[exception reason] UTF8String];
    }
    EXPECT_EQ(calls, steps) << raising;
    EXPECT_EQ(reason, raising);
  }
}
