// Whom the SDK tells, when, and of what.
#import <Foundation/Foundation.h>
#import <Zorbel/QVDevicePolicies.h>
#import <Zorbel/Zorbel.h>

#import "ListeningDelegate.h"
#import "Raised.h"

#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TheDelegate : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    sdk = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
    delegate = [[[QVListeningDelegate alloc] init] autorelease];
    [sdk setZorbelDelegate:delegate];
  }
  void TearDown() override { [pool drain]; }

  const std::vector<std::string> &heard() const { return delegate->heard; }

  static void change(NSString *json, NSString *message = nil) { QVDeviceZorbelChangePolicies(json, message); }

  /// Lets all happen that waits for the main run loop.
  static void turn() {
    for (int i = 0; i < 3; ++i)
      [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
  }

  NSAutoreleasePool *pool;
  Zorbel *sdk;
  QVListeningDelegate *delegate;
};

TEST_F(TheDelegate, isToldThatTheSDKIsReadyInALaterTurnOfTheMainRunLoop) {
  QVDeviceZorbelSetPolicies(@"{\"ready\": true}");
  [sdk startWithLaunchOptions:nil];
  EXPECT_THAT(heard(), IsEmpty());
  turn();
  EXPECT_THAT(heard(), ElementsAre("ready"));
}

TEST_F(TheDelegate, ofAnSDKThatIsNotStartedIsNotToldThatItIsReady) {
  QVDeviceZorbelSetPolicies(@"{\"ready\": true}");
  turn();
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(TheDelegate, ofAnSDKThatIsNotReadyIsToldWhenItBecomesSo) {
  [sdk startWithLaunchOptions:nil];
  turn();
  EXPECT_THAT(heard(), IsEmpty());
  change(@"{\"ready\": true}");
  EXPECT_THAT(heard(), ElementsAre("ready"));
}

TEST_F(TheDelegate, isToldOnceWhenTheSDKBecomesReadyBetweenItsStartAndTheTurn) {
  [sdk startWithLaunchOptions:nil];
  change(@"{\"ready\": true}");
  turn();
  EXPECT_THAT(heard(), ElementsAre("ready"));
}

TEST_F(TheDelegate, isNotToldOfAReadinessThatIsOverBeforeTheTurn) {
  QVDeviceZorbelSetPolicies(@"{\"ready\": true}");
  [sdk startWithLaunchOptions:nil];
  change(@"{\"ready\": false}");
  turn();
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(TheDelegate, isToldEachTimeThatTheSDKBecomesReadyAndNeverThatItIsNotAnyMore) {
  change(@"{\"ready\": true}");
  change(@"{\"ready\": false}");
  EXPECT_THAT(heard(), ElementsAre("ready"));
  change(@"{\"ready\": true}");
  EXPECT_THAT(heard(), ElementsAre("ready", "ready"));
}

TEST_F(TheDelegate, ofAnSDKThatIsStartedTwiceIsToldOnce) {
  QVDeviceZorbelSetPolicies(@"{\"ready\": true}");
  [sdk startWithLaunchOptions:nil];
  [sdk startWithLaunchOptions:nil];
  turn();
  EXPECT_THAT(heard(), ElementsAre("ready"));
}

TEST_F(TheDelegate, isToldOnTheMainThreadWhicheverThreadStartsTheSDK) {
  QVDeviceZorbelSetPolicies(@"{\"ready\": true}");
  std::thread([this] {
    GSRegisterCurrentThread();
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    [sdk startWithLaunchOptions:nil];
    [inner drain];
    GSUnregisterCurrentThread();
  }).join();
  EXPECT_THAT(heard(), IsEmpty());
  turn();
  EXPECT_THAT(heard(), ElementsAre("ready"));
}

TEST_F(TheDelegate, isToldAllThatChangesInAFixedOrderWhateverTheOrderOfTheKeys) {
  change(@"{\"printPolicy\": 1, \"pasteboardPolicy\": 2, \"openInWhitelist\": [\"com.a\", \"com.b\"], "
         @"\"openInPolicy\": 2, \"managedPolicy\": 2, \"config\": {\"key\": \"value\"}, \"authState\": 1, "
         @"\"ready\": true}",
         @"Welcome");
  EXPECT_THAT(heard(), ElementsAre("ready", "authState 1, Welcome", "config value", "managedPolicy 2",
                                   "openInPolicy 2, com.a com.b", "pasteboardPolicy 2", "printPolicy 1"));
}

TEST_F(TheDelegate, findsAllOfAChangeInForceWhenItIsToldOfTheFirst) {
  NSInteger printPolicy = -1;
  delegate->whenTold = [&] {
    if (printPolicy < 0) printPolicy = [sdk printPolicy];
  };
  change(@"{\"ready\": true, \"printPolicy\": 1}");
  EXPECT_EQ(printPolicy, 1);
}

TEST_F(TheDelegate, isNotToldOfValuesThatAreTheSameAsBefore) {
  NSString *const values = @"{\"ready\": true, \"authState\": 1, \"config\": {\"key\": \"value\"}, \"managedPolicy\": "
                           @"2, \"openInPolicy\": 2, \"openInWhitelist\": [\"com.a\"], \"pasteboardPolicy\": 1, "
                           @"\"printPolicy\": 1}";
  change(values);
  delegate->heard.clear();
  change(values, @"again");
  change(@"{}", @"nothing");
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(TheDelegate, isToldOfTheOpenInPolicyWhenOnlyTheWhitelistChanges) {
  change(@"{\"openInPolicy\": 2}");
  change(@"{\"openInWhitelist\": []}");
  change(@"{\"openInWhitelist\": [\"com.a\"]}");
  EXPECT_THAT(heard(), ElementsAre("openInPolicy 2, (null)", "openInPolicy 2, ", "openInPolicy 2, com.a"));
}

TEST_F(TheDelegate, isToldNothingOfWhatItIsNotThereFor) {
  change(@"{\"readyToTerminate\": true, \"checkInRequested\": true, \"appInfo\": {\"a\": 1}, "
         @"\"zbPasteboardTypePrefixes\": [\"zb\"], \"appSchemes\": [\"zb\"], \"delegateProxy\": true}");
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_TRUE([sdk isCheckInRequested]);
}

TEST_F(TheDelegate, isToldAStateThatNobodyKnowsAsItIs) {
  change(@"{\"authState\": -9223372036854775808}");
  change(@"{\"authState\": 3}");
  EXPECT_THAT(heard(), ElementsAre("authState -9223372036854775808, (null)", "authState 3, (null)"));
}

TEST_F(TheDelegate, isToldNothingOfAChangeThatIsRefusedAndNothingOfItIsInForce) {
  EXPECT_EQ(raisedBy([] { change(@"{\"ready\": true, \"authState\": \"1\"}"); }), "NSInvalidArgumentException");
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_FALSE([sdk isReady]);
}

TEST_F(TheDelegate, isNeverToldOnAnotherThread) {
  std::string raised;
  std::thread([&raised] {
    GSRegisterCurrentThread();
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    @try {
      change(@"{\"ready\": true}");
    } @catch (NSException *exception) {
      raised = [[exception reason] UTF8String];
    }
    [inner drain];
    GSUnregisterCurrentThread();
  }).join();
  EXPECT_EQ(raised, "QVDeviceZorbelChangePolicies is for the main thread only");
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_FALSE([sdk isReady]);
}

TEST_F(TheDelegate, thatIsNilIsToldNothing) {
  [sdk setZorbelDelegate:nil];
  [sdk startWithLaunchOptions:nil];
  change(@"{\"ready\": true, \"authState\": 1}");
  turn();
  EXPECT_EQ([sdk zorbelDelegate], nil);
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_EQ([sdk authState], 1);
}

TEST_F(TheDelegate, thatIsPutInItsPlaceWhileItIsToldHearsTheRest) {
  QVListeningDelegate *const other = [[[QVListeningDelegate alloc] init] autorelease];
  delegate->whenTold = [&] { [sdk setZorbelDelegate:other]; };
  change(@"{\"authState\": 1, \"printPolicy\": 1}");
  EXPECT_THAT(heard(), ElementsAre("authState 1, (null)"));
  EXPECT_THAT(other->heard, ElementsAre("printPolicy 1"));
}

TEST_F(TheDelegate, isNotKeptAliveAndForgottenWhenItGoes) {
  QVListeningDelegate *const other = [[QVListeningDelegate alloc] init];
  NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
  [sdk setZorbelDelegate:other];
  EXPECT_EQ([sdk zorbelDelegate], other);
  [inner drain];
  EXPECT_EQ([other retainCount], 1u);
  [other release];
  EXPECT_EQ([sdk zorbelDelegate], nil);
  change(@"{\"ready\": true}");
}

} // namespace
