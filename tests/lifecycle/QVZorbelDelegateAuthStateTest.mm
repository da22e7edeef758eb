// What follows from the app's authorisation.
#include "DelegateTest.h"

namespace {

/// A delegate whose SDK is ready, whose host hears of its state and has heard that it is not authorised.
class AuthState : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    sdk->ready = YES;
    sdk->managedPolicy = 2;
    [delegate setWrappedZorbelState:0];
    [host has:@"zorbelStateChangedTo:", nil];
  }

  void change(NSInteger state, NSString *message) {
    sdk->authState = state;
    [delegate zorbel:sdk authStateChangedTo:state withMessage:message];
  }
};

const char *const kCheckIn = "log 2 App is not authorized but check-in is requested hence not aborting the process.";

} // namespace

TEST_F(AuthState, UnauthorizedIsAnsweredShownAndEndsTheApp) {
  [delegate setWrappedZorbelState:1];
  change(0, @"gone");
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Unauthorized",
                        "log 2 App is not authorized. Message: 'gone'",
                        "sdk authStateApplied: 1 message: gone",
                        "sdk displayMessage: gone",
                        "log 2 App is not authorized so shutting down.",
                        "terminate",
                        "host zorbelStateChangedTo: 0",
                    }));
}

TEST_F(AuthState, UnauthorizedWhileTheSDKRequestsCheckInNeverEndsTheApp) {
  sdk->checkInRequested = YES;
  [delegate setWrappedZorbelState:1];
  change(0, @"check in");
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Unauthorized",
                        "log 2 App is not authorized. Message: 'check in'",
                        "sdk authStateApplied: 1 message: check in",
                        kCheckIn,
                        "host zorbelStateChangedTo: 0",
                    }));
}

TEST_F(AuthState, UnauthorizedAsksTheSDKInUseForCheckInAndAnswersTheOneThatSaidSo) {
  QVTestZorbel *const other = [[[QVTestZorbel alloc] init] autorelease];
  *other->name = "other";
  other->checkInRequested = YES;
  [delegate zorbel:other authStateChangedTo:0 withMessage:@"m"];
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Unauthorized",
                        "log 2 App is not authorized. Message: 'm'",
                        "other authStateApplied: 1 message: m",
                        "other displayMessage: m",
                        "log 2 App is not authorized so shutting down.",
                        "terminate",
                    }));
}

TEST_F(AuthState, UnauthorizedWithoutAMessageEndsTheAppAllTheSame) {
  change(0, nil);
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Unauthorized",
                        "log 2 App is not authorized. Message: '(null)'",
                        "sdk authStateApplied: 1 message: nil",
                        "sdk displayMessage: nil",
                        "log 2 App is not authorized so shutting down.",
                        "terminate",
                    }));
}

TEST_F(AuthState, UnauthorizedOnceTheSDKInUseHasGoneEndsTheApp) {
  releaseSDK();
  [delegate zorbel:nil authStateChangedTo:0 withMessage:@"gone"];
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Unauthorized",
                        "log 2 App is not authorized. Message: 'gone'",
                        "log 2 App is not authorized so shutting down.",
                        "terminate",
                    }));
}

TEST_F(AuthState, AMessageWithPercentSignsIsNoFormat) {
  sdk->checkInRequested = YES;
  change(0, @"100%@ %s %n");
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Unauthorized",
                        "log 2 App is not authorized. Message: '100%@ %s %n'",
                        "sdk authStateApplied: 1 message: 100%@ %s %n",
                        kCheckIn,
                    }));
}

TEST_F(AuthState, AuthorizedIsAnsweredAndTellsTheHost) {
  change(1, @"welcome");
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Authorized",
                        "sdk authStateApplied: 1 message: welcome",
                        "host zorbelStateChangedTo: 1",
                    }));
}

TEST_F(AuthState, AuthorizedReplaysWhatWasHeldBackAfterItIsAnswered) {
  [host has:@"application:didFinishLaunchingWithOptions:", nil];
  [delegate setReplay:1];
  change(1, nil);
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Authorized",
                        "sdk authStateApplied: 1 message: nil",
                        "log 3 Replaying first launch to AppDelegate",
                        "host application:didFinishLaunchingWithOptions: app nil",
                        "host zorbelStateChangedTo: 1",
                    }));
}

TEST_F(AuthState, AuthorizedWithAHostThatRaisesDuringTheReplayTellsTheHostItsStateAndGoesOn) {
  [host has:@"application:didFinishLaunchingWithOptions:", nil];
  host->raisesFrom = @"application:didFinishLaunchingWithOptions:";
  [delegate setReplay:3];
  EXPECT_EQ(raisedBy(^{
              change(1, nil);
            }), "the host's");
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Authorized",
                        "sdk authStateApplied: 1 message: nil",
                        "log 3 Replaying first launch to AppDelegate",
                        "host application:didFinishLaunchingWithOptions: app nil",
                        "host zorbelStateChangedTo: 1",
                    }));
  EXPECT_EQ([delegate replay], 0);
}

TEST_F(AuthState, RetiredWipesBeforeTheMessageIsShownAndTheAppEndsAndIsNotAnswered) {
  [delegate setWrappedZorbelState:1];
  change(2, @"bye");
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Retired",
                        "log 2 App has been requested to retire... 'bye'",
                        "util wipeApplication",
                        "sdk displayMessage: bye",
                        "terminate",
                        "host zorbelStateChangedTo: 0",
                    }));
}

TEST_F(AuthState, RetiredWipesAndEndsTheAppThoughTheSDKRequestsCheckIn) {
  sdk->checkInRequested = YES;
  change(2, nil);
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Retired",
                        "log 2 App has been requested to retire... '(null)'",
                        "util wipeApplication",
                        "sdk displayMessage: nil",
                        "terminate",
                    }));
}

TEST_F(AuthState, RetiredWithoutAnSDKWipesAndEndsTheApp) {
  releaseSDK();
  [delegate zorbel:nil authStateChangedTo:2 withMessage:@"bye"];
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Retired",
                        "log 2 App has been requested to retire... 'bye'",
                        "util wipeApplication",
                        "terminate",
                    }));
}

TEST_F(AuthState, RetiredWithAWipeThatRaisesEndsTheAppAndGoesOn) {
  wipeRaises = true;
  EXPECT_EQ(raisedBy(^{
              change(2, @"bye");
            }), "the wipe's");
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Retired",
                        "log 2 App has been requested to retire... 'bye'",
                        "util wipeApplication",
                        "sdk displayMessage: bye",
                        "terminate",
                    }));
}

TEST_F(AuthState, AnyOtherIsRefusedAndChangesNothing) {
  for (const auto &[state, text] : {std::pair{NSInteger{3}, "3"}, {NSInteger{-1}, "-1"}, {NSInteger{1000}, "1000"}}) {
    change(state, @"what");
    EXPECT_EQ(take(), (Lines{
                          "log 3 Auth state changed: Unknown Auth State",
                          "log 3 Ignoring state change... (" + std::string(text) + ")",
                          "sdk authStateApplied: 0 message: what",
                      }));
  }
}

TEST_F(AuthState, BeyondThirtyTwoBitsIsAnyOther) {
  sdk->authState = 1;
  [delegate setWrappedZorbelState:1];
  [delegate zorbel:sdk authStateChangedTo:(NSInteger{1} << 32) + 2 withMessage:nil];
  EXPECT_EQ(take(), (Lines{
                        "log 3 Auth state changed: Unknown Auth State",
                        "log 3 Ignoring state change... (2)",
                        "sdk authStateApplied: 0 message: nil",
                    }));
}

TEST_F(AuthState, IsToldToTheHostAfterEachChangeIfItMakesADifference) {
  sdk->checkInRequested = YES;
  [delegate setWrappedZorbelState:-1];
  for (const NSInteger state : {0, 1, 1, 3, 1, 0, 0}) {
    change(state, nil);
  }
  Lines told;
  for (const std::string &line : take()) {
    if (line.starts_with("host")) told.push_back(line);
  }
  EXPECT_EQ(told, (Lines{"host zorbelStateChangedTo: 0", "host zorbelStateChangedTo: 1", "host zorbelStateChangedTo: 0",
                         "host zorbelStateChangedTo: 1", "host zorbelStateChangedTo: 0"}));
}
