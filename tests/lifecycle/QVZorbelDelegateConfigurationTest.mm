// What happens when the SDK's configuration changes.
#include "DelegateTest.h"

#include <objc/runtime.h>

namespace {

class ConfigurationChange : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    sdk->ready = YES;
  }

  void change() { [delegate zorbel:sdk configChangedTo:@{@"server" : @"b"}]; }
};

} // namespace

TEST_F(ConfigurationChange, ThatFiltersToNothingTellsTheSDKNothing) {
  [host has:@"zorbelConfigIs:", @"zorbelConfigChangedTo:", nil];
  [delegate zorbel:sdk configChangedTo:@{}];
  [delegate zorbel:sdk configChangedTo:nil];
  [delegate zorbel:sdk
      configChangedTo:@{@"QV_ZB_WR_ENABLE_LOG_CAPTURE" : @"NO", @"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION" : @"NO"}];
  EXPECT_EQ(take(), Lines());
}

TEST_F(ConfigurationChange, ThatFiltersToNothingStillDecidesOnTheCapture) {
  captureIsOn = true;
  [delegate zorbel:sdk configChangedTo:nil];
  EXPECT_EQ(take(), Lines{"capture stopped, file removed"});
}

TEST_F(ConfigurationChange, DecidesOnTheCaptureBeforeTheHostHears) {
  sdk->config = [@{@"QV_ZB_WR_ENABLE_LOG_CAPTURE" : @1} retain];
  [host has:@"zorbelConfigChangedTo:", nil];
  change();
  EXPECT_EQ(take(),
            (Lines{"capture started", "host zorbelConfigChangedTo: server", "sdk configApplied: 1 message: nil"}));
}

TEST_F(ConfigurationChange, KeepsTheLibrarysOwnKeysFromTheHost) {
  [host has:@"zorbelConfigChangedTo:", nil];
  [delegate zorbel:sdk configChangedTo:@{@"QV_ZB_WR_ENABLE_LOG_CAPTURE" : @"NO", @"QV_ZB_WR_OTHER" : @"YES"}];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigChangedTo: QV_ZB_WR_OTHER", "sdk configApplied: 1 message: nil"}));
}

TEST_F(ConfigurationChange, IsNotAppliedByAHostThatHasNeitherMethod) {
  change();
  EXPECT_EQ(take(), Lines{"sdk configApplied: 0 message: nil"});
}

TEST_F(ConfigurationChange, IsNotAppliedWithoutAnApplicationDelegate) {
  [[UIApplication sharedApplication] setDelegate:nil];
  change();
  EXPECT_EQ(take(), Lines{"sdk configApplied: 0 message: nil"});
}

TEST_F(ConfigurationChange, GoesToAHostThatHearsOfChanges) {
  [host has:@"zorbelConfigChangedTo:", nil];
  change();
  EXPECT_EQ(take(), (Lines{"host zorbelConfigChangedTo: server", "sdk configApplied: 1 message: nil"}));
  host->answerToConfigChanged = @"no such server";
  change();
  EXPECT_EQ(take(), (Lines{"host zorbelConfigChangedTo: server", "sdk configApplied: 2 message: no such server"}));
}

TEST_F(ConfigurationChange, GoesToAHostThatOnlyTakesConfigurations) {
  [host has:@"zorbelConfigIs:", nil];
  change();
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 1 message: nil"}));
  host->answerToConfigIs = @"no such server";
  change();
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 2 message: no such server"}));
}

TEST_F(ConfigurationChange, GoesToBothMethodsOfAHostAndTheSDKHearsTheLastOnesAnswer) {
  [host has:@"zorbelConfigIs:", @"zorbelConfigChangedTo:", nil];
  struct Case {
    NSString *changed, *is;
    const char *heard;
  };
  for (const Case &each : {
           Case{nil, nil, "sdk configApplied: 1 message: nil"},
           Case{@"first", nil, "sdk configApplied: 1 message: nil"},
           Case{nil, @"second", "sdk configApplied: 2 message: second"},
           Case{@"first", @"second", "sdk configApplied: 2 message: second"},
       }) {
    host->answerToConfigChanged = each.changed;
    host->answerToConfigIs = each.is;
    change();
    EXPECT_EQ(take(), (Lines{"host zorbelConfigChangedTo: server", "host zorbelConfigIs: server", each.heard}));
  }
}

TEST_F(ConfigurationChange, IsTheOneThatTheSDKHandsOverNotTheOneThatItHas) {
  sdk->config = [@{@"old" : @1} retain];
  [host has:@"zorbelConfigIs:", nil];
  change();
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 1 message: nil"}));
}

TEST_F(ConfigurationChange, LeavesTheStateAlone) {
  [host has:@"zorbelStateChangedTo:", nil];
  change();
  EXPECT_EQ(take(), Lines{"sdk configApplied: 0 message: nil"});
  EXPECT_EQ([delegate wrappedZorbelState], -1);
}

TEST_F(ConfigurationChange, WithAHostThatRaisesIsNotAnsweredAndTheExceptionGoesOn) {
  [host has:@"zorbelConfigIs:", @"zorbelConfigChangedTo:", nil];
  host->raisesFrom = @"zorbelConfigChangedTo:";
  EXPECT_EQ(raisedBy(^{
              change();
            }), "the host's");
  EXPECT_EQ(take(), Lines{"host zorbelConfigChangedTo: server"});
  host->raisesFrom = nil;
  change();
  EXPECT_EQ(take(), (Lines{"host zorbelConfigChangedTo: server", "host zorbelConfigIs: server",
                           "sdk configApplied: 1 message: nil"}));
}

TEST_F(ConfigurationChange, WithoutAnSDKReachesTheHost) {
  [host has:@"zorbelConfigChangedTo:", nil];
  [delegate zorbel:nil configChangedTo:@{@"server" : @"b"}];
  EXPECT_EQ(take(), Lines{"host zorbelConfigChangedTo: server"});
}

namespace {
QVTestZorbel *lastReference = nil;
void dropLastReference() {
  [lastReference release];
  lastReference = nil;
}
} // namespace

TEST_F(ConfigurationChange, KeepsAnSDKThatTheHostReleasesUntilItHasBeenAnswered) {
  lastReference = [[QVTestZorbel alloc] init];
  [host has:@"zorbelConfigChangedTo:", nil];
  host->during = &dropLastReference;
  [delegate zorbel:lastReference configChangedTo:@{@"server" : @"b"}];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigChangedTo: server", "sdk configApplied: 1 message: nil"}));
  EXPECT_EQ([QVTestZorbel live], 1);
}

namespace {
void takeTheDelegateAway() { [[UIApplication sharedApplication] setDelegate:nil]; }
} // namespace

TEST_F(ConfigurationChange, GoesToBothMethodsOfAHostThatStepsDownInBetween) {
  [host has:@"zorbelConfigIs:", @"zorbelConfigChangedTo:", nil];
  host->during = &takeTheDelegateAway;
  change();
  EXPECT_EQ(take(), (Lines{"host zorbelConfigChangedTo: server", "host zorbelConfigIs: server",
                           "sdk configApplied: 1 message: nil"}));
}
