// What happens when the SDK becomes ready.
#include "DelegateTest.h"

namespace {

/// A delegate whose SDK is ready, the app authorised and managed, the pasteboard allowed.
class Ready : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    sdk->ready = YES;
    sdk->authState = 1;
    sdk->managedPolicy = 2;
    sdk->pasteboardPolicy = 1;
    sdk->config = [@{@"server" : @"a"} retain];
  }
};

} // namespace

TEST_F(Ready, TakesEveryStepInOrder) {
  sdk->readyToTerminate = YES;
  sdk->authState = 0;
  sdk->pasteboardPolicy = 0;
  captureIsOn = true;
  [host has:@"zorbelConfigIs:", @"zorbelStateChangedTo:", nil];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), (Lines{
                        "terminate",
                        "capture stopped, file removed",
                        "host zorbelConfigIs: server",
                        "sdk configApplied: 1 message: nil",
                        "host zorbelStateChangedTo: 0",
                    }));
  EXPECT_TRUE(pasteboardIsWatched());
}

TEST_F(Ready, TellsTheSDKWhatTheHostHasAgainstTheConfiguration) {
  [host has:@"zorbelConfigIs:", nil];
  host->answerToConfigIs = @"no server of that name";
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 2 message: no server of that name"}));
}

TEST_F(Ready, TakesAnEmptyAnswerForAnError) {
  [host has:@"zorbelConfigIs:", nil];
  host->answerToConfigIs = @"";
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 2 message: "}));
}

TEST_F(Ready, TellsTheSDKNothingOfAConfigurationThatTheHostCannotTake) {
  [host has:@"zorbelConfigChangedTo:", nil];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), Lines());
}

TEST_F(Ready, KeepsTheLibrarysOwnKeysFromTheHost) {
  [sdk->config release];
  sdk->config = [@{
    @"QV_ZB_WR_ENABLE_LOG_CAPTURE" : @"NO",
    @"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION" : @"YES",
    @"server" : @"a",
  } retain];
  [host has:@"zorbelConfigIs:", nil];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 1 message: nil"}));
}

TEST_F(Ready, GivesTheHostAnEmptyConfigurationAndNoneAsTheyAre) {
  [sdk->config release];
  sdk->config = [@{} retain];
  [host has:@"zorbelConfigIs:", nil];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: ", "sdk configApplied: 1 message: nil"}));
  [sdk->config release];
  sdk->config = nil;
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: nil", "sdk configApplied: 1 message: nil"}));
}

TEST_F(Ready, AnswersTheSDKThatItCameFrom) {
  QVTestZorbel *const other = [[[QVTestZorbel alloc] init] autorelease];
  *other->name = "other";
  other->pasteboardPolicy = 0;
  [host has:@"zorbelConfigIs:", nil];
  [delegate zorbelIsReady:other];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "other configApplied: 1 message: nil"}));
  EXPECT_TRUE(pasteboardIsWatched());
}

TEST_F(Ready, TellsTheHostItsStateTheFirstTimeAndThenOnlyWhenItChanges) {
  [host has:@"zorbelStateChangedTo:", nil];
  [delegate zorbelIsReady:sdk];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 1"});
  sdk->managedPolicy = 1;
  [delegate zorbelIsReady:sdk];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 0"});
}

TEST_F(Ready, WatchesThePasteboardOnceUnderPolicyZero) {
  sdk->pasteboardPolicy = 0;
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ([util() registeredForPasteboardChangeNotification], YES);
  [delegate zorbelIsReady:sdk];
  EXPECT_TRUE(pasteboardIsWatched()); // which expects one notice
}

TEST_F(Ready, DoesNotWatchThePasteboardUnderAnyOtherPolicy) {
  for (const NSInteger policy : {1, 2, 3, -1}) {
    sdk->pasteboardPolicy = policy;
    [delegate zorbelIsReady:sdk];
    EXPECT_EQ([util() registeredForPasteboardChangeNotification], NO) << policy;
    EXPECT_FALSE(pasteboardIsWatched()) << policy;
  }
}

TEST_F(Ready, GoesOnWatchingThePasteboardUnderAnyOtherPolicy) {
  sdk->pasteboardPolicy = 0;
  [delegate zorbelIsReady:sdk];
  sdk->pasteboardPolicy = 1;
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ([util() registeredForPasteboardChangeNotification], YES);
  EXPECT_TRUE(pasteboardIsWatched());
}

TEST_F(Ready, DoesNotWatchThePasteboardTwiceThoughTheFlagWasSetByAnother) {
  [util() setRegisteredForPasteboardChangeNotification:YES];
  sdk->pasteboardPolicy = 0;
  [delegate zorbelIsReady:sdk];
  EXPECT_FALSE(pasteboardIsWatched());
}

TEST_F(Ready, EndsTheAppOnlyIfTheSDKIsReadyAndReadyToTerminateAndTheAppIsNotAuthorised) {
  for (const BOOL ready : {NO, YES}) {
    for (const BOOL readyToTerminate : {NO, YES}) {
      for (const NSInteger state : {0, 1, 2, 3, -1}) {
        sdk->ready = ready;
        sdk->readyToTerminate = readyToTerminate;
        sdk->authState = state;
        [delegate zorbelIsReady:sdk];
        const bool ends = ready && readyToTerminate && state != 1;
        EXPECT_EQ(take(), ends ? Lines{"terminate"} : Lines()) << int(ready) << int(readyToTerminate) << state;
      }
    }
  }
}

TEST_F(Ready, WithAHostThatRaisesOverTheConfigurationDoesTheRestAndLetsTheExceptionGoOn) {
  sdk->pasteboardPolicy = 0;
  [host has:@"zorbelConfigIs:", @"zorbelStateChangedTo:", nil];
  host->raisesFrom = @"zorbelConfigIs:";
  EXPECT_EQ(raisedBy(^{
              [delegate zorbelIsReady:sdk];
            }), "the host's");
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "host zorbelStateChangedTo: 1"}));
  EXPECT_EQ([delegate wrappedZorbelState], 1);
  EXPECT_TRUE(pasteboardIsWatched());
}

TEST_F(Ready, WithAHostThatRaisesOverTheStateWatchesThePasteboardAndTellsTheStateOnce) {
  sdk->pasteboardPolicy = 0;
  [host has:@"zorbelStateChangedTo:", nil];
  host->raisesFrom = @"zorbelStateChangedTo:";
  EXPECT_EQ(raisedBy(^{
              [delegate zorbelIsReady:sdk];
            }), "the host's");
  EXPECT_EQ([delegate wrappedZorbelState], 1);
  EXPECT_TRUE(pasteboardIsWatched());
  EXPECT_EQ(raisedBy(^{
              [delegate zorbelIsReady:sdk];
            }), "");
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 1"});
}

TEST_F(Ready, WithoutAnSDKGivesTheHostNothingToTakeAndFailsClosed) {
  releaseSDK();
  [host has:@"zorbelConfigIs:", @"zorbelStateChangedTo:", nil];
  [delegate zorbelIsReady:nil];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: nil", "host zorbelStateChangedTo: 0"}));
  EXPECT_TRUE(pasteboardIsWatched());
}

namespace {
QVTestZorbel *lastReference = nil;
void dropLastReference() {
  [lastReference release];
  lastReference = nil;
}
} // namespace

TEST_F(Ready, KeepsAnSDKThatTheHostReleasesUntilItHasBeenAnswered) {
  QVTestZorbel *const other = [[QVTestZorbel alloc] init];
  lastReference = other;
  [host has:@"zorbelConfigIs:", nil];
  host->during = &dropLastReference;
  [delegate zorbelIsReady:other];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 1 message: nil"}));
  EXPECT_EQ([QVTestZorbel live], 1);
}

namespace {
void takeTheDelegateAway() { [[UIApplication sharedApplication] setDelegate:nil]; }
} // namespace

TEST_F(Ready, AsksForTheApplicationsDelegateAnewForEveryUse) {
  [host has:@"zorbelConfigIs:", @"zorbelStateChangedTo:", nil];
  host->during = &takeTheDelegateAway;
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), (Lines{"host zorbelConfigIs: server", "sdk configApplied: 1 message: nil"}));
  EXPECT_EQ([delegate wrappedZorbelState], 1);
}

TEST_F(Ready, WithoutAnApplicationDelegateTellsNobody) {
  [[UIApplication sharedApplication] setDelegate:nil];
  [delegate setOriginalDelegate:host];
  [host has:@"zorbelConfigIs:", @"zorbelStateChangedTo:", nil];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(), Lines());
}
