// The host app's life as it reaches the delegate.
#include "DelegateTest.h"

namespace {

class LifecycleEntry : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    [util() setZorbel:nil];
    take();
  }

  /// The two lines that the launch logs first.
  static Lines launchLines(NSDictionary *options) {
    return {"log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]",
            "log 5 " + (options ? support::text([options description]) : std::string("(null)"))};
  }
};

Lines operator+(Lines left, const Lines &right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

} // namespace

TEST_F(LifecycleEntry, LaunchStartsTheSDKAndThenHandsItToThePolicyObject) {
  [delegate setQvZorbel:nil];
  NSDictionary *const options = @{@"key" : @"value"};
  [delegate applicationDidFinishLaunchingWithOptions:options];
  const Lines started = {"sdk setZorbelDelegate: QVZorbelDelegate", "sdk startWithLaunchOptions: value",
                         "util setZorbel: shared"};
  EXPECT_EQ(take(), launchLines(options) + started);
  EXPECT_EQ(sdk->delegate, delegate);
  EXPECT_EQ([delegate qvZorbel], sdk);
  EXPECT_EQ([util() zorbel], sdk);
}

TEST_F(LifecycleEntry, LaunchWithoutOptionsStartsTheSDKWithNone) {
  [delegate setQvZorbel:nil];
  [delegate applicationDidFinishLaunchingWithOptions:nil];
  const Lines started = {"sdk setZorbelDelegate: QVZorbelDelegate", "sdk startWithLaunchOptions: nil",
                         "util setZorbel: shared"};
  EXPECT_EQ(take(), launchLines(nil) + started);
}

TEST_F(LifecycleEntry, ASecondLaunchIsLoggedAndStartsNothing) {
  [delegate applicationDidFinishLaunchingWithOptions:@{@"key" : @"value"}];
  EXPECT_EQ(take(), launchLines(@{@"key" : @"value"}));
  EXPECT_EQ([util() zorbel], nil);
}

TEST_F(LifecycleEntry, LaunchOnceTheSDKHasGoneStartsTheOneThatTookItsPlace) {
  releaseSDK();
  makeSDK();
  take();
  [delegate applicationDidFinishLaunchingWithOptions:nil];
  const Lines started = {"sdk setZorbelDelegate: QVZorbelDelegate", "sdk startWithLaunchOptions: nil",
                         "util setZorbel: shared"};
  EXPECT_EQ(take(), launchLines(nil) + started);
  EXPECT_EQ([delegate qvZorbel], sdk);
  EXPECT_EQ([util() zorbel], sdk);
}

TEST_F(LifecycleEntry, LaunchWithoutAnSDKLeavesThePolicyObjectWithoutOne) {
  releaseSDK();
  [delegate applicationDidFinishLaunchingWithOptions:nil];
  EXPECT_EQ(take(), launchLines(nil) + Lines{"util setZorbel: shared"});
  EXPECT_EQ([delegate qvZorbel], nil);
  EXPECT_EQ([util() zorbel], nil);
}

TEST_F(LifecycleEntry, LaunchGoesByTheDelegatesOwnSDKAndNotByThePolicyObjects) {
  [util() setZorbel:sdk];
  [delegate setQvZorbel:nil];
  take();
  [delegate applicationDidFinishLaunchingWithOptions:nil];
  EXPECT_EQ([delegate qvZorbel], sdk);
  EXPECT_EQ(sdk->delegate, delegate);
}

TEST_F(LifecycleEntry, LaunchHasTheSDKInUseByTheTimeThatTheSDKHearsOfItsDelegate) {
  [delegate setQvZorbel:nil];
  sdk->whenGivenADelegate = [](id given) {
    note([given qvZorbel] == nil ? "not in use" : "in use");
    note([util() zorbel] == nil ? "nothing to decide by" : "decisions");
  };
  [delegate applicationDidFinishLaunchingWithOptions:nil];
  const Lines started = {"sdk setZorbelDelegate: QVZorbelDelegate", "in use", "nothing to decide by",
                         "sdk startWithLaunchOptions: nil", "util setZorbel: shared"};
  EXPECT_EQ(take(), launchLines(nil) + started);
}

TEST_F(LifecycleEntry, BecomingActiveTakesASnapshotOfThePasteboardWhateverTheState) {
  [delegate applicationDidBecomeActive];
  EXPECT_EQ(take(), (Lines{"log 3 -[QVZorbelDelegate applicationDidBecomeActive]", "util takeSnapshot"}));
}

TEST_F(LifecycleEntry, BecomingActiveEndsAnAppThatTheSDKWantsEndedAfterTheSnapshot) {
  sdk->ready = sdk->readyToTerminate = YES;
  const Lines always = {"log 3 -[QVZorbelDelegate applicationDidBecomeActive]", "util takeSnapshot"};
  for (const NSInteger state : {0, 2, 3, -1}) {
    sdk->authState = state;
    [delegate applicationDidBecomeActive];
    EXPECT_EQ(take(), always + Lines{"terminate"}) << state;
  }
  sdk->authState = 1;
  [delegate applicationDidBecomeActive];
  EXPECT_EQ(take(), always);
  sdk->authState = 0;
  sdk->ready = NO;
  [delegate applicationDidBecomeActive];
  EXPECT_EQ(take(), always);
  sdk->ready = YES;
  sdk->readyToTerminate = NO;
  [delegate applicationDidBecomeActive];
  EXPECT_EQ(take(), always);
}

TEST_F(LifecycleEntry, BecomingActiveOnceTheSDKHasGoneTakesTheSnapshotAndEndsNothing) {
  sdk->ready = sdk->readyToTerminate = YES;
  releaseSDK();
  [delegate applicationDidBecomeActive];
  EXPECT_EQ(take(), (Lines{"log 3 -[QVZorbelDelegate applicationDidBecomeActive]", "util takeSnapshot"}));
}

TEST_F(LifecycleEntry, BecomingActiveDoesNotUpdateTheState) {
  [host has:@"zorbelStateChangedTo:", nil];
  [delegate applicationDidBecomeActive];
  EXPECT_EQ([delegate wrappedZorbelState], -1);
}

TEST_F(LifecycleEntry, ResigningActiveRestoresThePasteboard) {
  [delegate applicationWillResignActive];
  EXPECT_EQ(take(), (Lines{"log 3 -[QVZorbelDelegate applicationWillResignActive]", "util restoreSnapshot"}));
}

TEST_F(LifecycleEntry, EnteringTheBackgroundStopsThePasscodeExtension) {
  [delegate applicationDidEnterBackground];
  EXPECT_EQ(take(),
            (Lines{"log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) ", "util stopPasscodeExtension"}));
}

TEST_F(LifecycleEntry, EnteringTheForegroundIsOnlyLogged) {
  // Not even an app that the SDK wants ended is ended by it.
  sdk->ready = sdk->readyToTerminate = YES;
  [delegate applicationWillEnterForeground];
  EXPECT_EQ(take(), (Lines{"log 3 (-[QVZorbelDelegate applicationWillEnterForeground]) "}));
}

TEST_F(LifecycleEntry, TerminatingRestoresThePasteboard) {
  [delegate applicationWillTerminate];
  EXPECT_EQ(take(), (Lines{"log 3 -[QVZorbelDelegate applicationWillTerminate]", "util restoreSnapshot"}));
}
