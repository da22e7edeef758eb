// The one number by which the host hears how it stands with the SDK.
#include "DelegateTest.h"

namespace {

using HostState = DelegateTest;

} // namespace

TEST_F(HostState, IsOneOnlyWhileTheSDKIsReadyAndTheAppAuthorisedAndManaged) {
  for (const BOOL ready : {NO, YES}) {
    for (const NSInteger authState : {0, 1, 2, 3, -1}) {
      for (const NSInteger managed : {0, 1, 2, 3, -1}) {
        sdk->ready = ready;
        sdk->authState = authState;
        sdk->managedPolicy = managed;
        [delegate updateWrappedZorbelState];
        EXPECT_EQ([delegate wrappedZorbelState], ready && authState == 1 && managed == 2)
            << int(ready) << " " << authState << " " << managed;
      }
    }
  }
  EXPECT_EQ(take(), Lines());
}

TEST_F(HostState, IsToldTheFirstTimeWhateverItIs) {
  [host has:@"zorbelStateChangedTo:", nil];
  [delegate updateWrappedZorbelState];
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 0"});
  id<QVDelegateObject> const second = make();
  sdk->ready = YES;
  sdk->authState = 1;
  sdk->managedPolicy = 2;
  [second setQvZorbel:sdk];
  [second updateWrappedZorbelState];
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 1"});
  [second release];
}

TEST_F(HostState, IsToldOnlyWhenItChanges) {
  [host has:@"zorbelStateChangedTo:", nil];
  [delegate updateWrappedZorbelState];
  [delegate updateWrappedZorbelState];
  sdk->ready = YES;
  sdk->authState = 1;
  sdk->managedPolicy = 2;
  [delegate updateWrappedZorbelState];
  [delegate updateWrappedZorbelState];
  sdk->authState = 0;
  [delegate updateWrappedZorbelState];
  sdk->authState = 2;
  [delegate updateWrappedZorbelState];
  EXPECT_EQ(take(),
            (Lines{"host zorbelStateChangedTo: 0", "host zorbelStateChangedTo: 1", "host zorbelStateChangedTo: 0"}));
}

TEST_F(HostState, IsZeroOnceTheSDKHasGone) {
  [host has:@"zorbelStateChangedTo:", nil];
  sdk->ready = YES;
  sdk->authState = 1;
  sdk->managedPolicy = 2;
  [delegate updateWrappedZorbelState];
  releaseSDK();
  [delegate updateWrappedZorbelState];
  EXPECT_EQ(take(), (Lines{"host zorbelStateChangedTo: 1", "host zorbelStateChangedTo: 0"}));
}

TEST_F(HostState, IsKeptThoughNobodyCanBeTold) {
  [delegate updateWrappedZorbelState];
  EXPECT_EQ([delegate wrappedZorbelState], 0);
  [host has:@"zorbelStateChangedTo:", nil];
  [delegate updateWrappedZorbelState];
  EXPECT_EQ(take(), Lines());
}

TEST_F(HostState, ReachesTheApplicationsDelegateAndNotTheOneThatLaunched) {
  [[UIApplication sharedApplication] setDelegate:nil];
  [delegate setOriginalDelegate:host];
  [host has:@"zorbelStateChangedTo:", nil];
  [delegate updateWrappedZorbelState];
  EXPECT_EQ(take(), Lines());
}

TEST_F(HostState, ReachesTheHostWithAllItsBits) {
  [host has:@"zorbelStateChangedTo:", nil];
  for (const int64_t state : {INT64_MIN, int64_t{-1}, int64_t{1} << 40, INT64_MAX}) {
    [delegate notifyAppDelegateWithZorbelState:state];
    EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: " + std::to_string(state)});
  }
  EXPECT_EQ([delegate wrappedZorbelState], -1);
}

TEST_F(HostState, IsKeptWhenTheHostRaisesAndTheExceptionGoesOn) {
  [host has:@"zorbelStateChangedTo:", nil];
  host->raisesFrom = @"zorbelStateChangedTo:";
  EXPECT_EQ(raisedBy(^{
              [delegate updateWrappedZorbelState];
            }), "the host's");
  EXPECT_EQ([delegate wrappedZorbelState], 0);
  EXPECT_EQ(raisedBy(^{
              [delegate updateWrappedZorbelState];
            }), "");
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 0"});
}

namespace {
id<QVDelegateObject> asked = nil;
void askAgain() { [asked updateWrappedZorbelState]; }
} // namespace

TEST_F(HostState, IsToldOnceThoughTheHostAsksForAnUpdateWhileItIsTold) {
  [host has:@"zorbelStateChangedTo:", nil];
  asked = delegate;
  host->during = &askAgain;
  [delegate updateWrappedZorbelState];
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 0"});
}
