// Launch and URL that were held back.
#include "DelegateTest.h"

namespace {

class Replay : public DelegateTest {
protected:
  UIApplication *app() { return [UIApplication sharedApplication]; }
  NSURL *url() { return [NSURL URLWithString:@"notes:1"]; }

  void expectCleared() {
    EXPECT_EQ([delegate launchDictionary], nil);
    EXPECT_EQ([delegate launchUrl], nil);
    EXPECT_EQ([delegate launchSourceApplication], nil);
    EXPECT_EQ([delegate launchAnnotation], nil);
    EXPECT_EQ([delegate replay], 0);
  }
};

const char *const kLaunchLine = "log 3 Replaying first launch to AppDelegate";
const char *const kURLLine = "log 3 Replaying Open URL";

} // namespace

TEST_F(Replay, OfNothingIsYesAndTouchesNothing) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"application:openURL:options:", nil];
  [delegate setLaunchUrl:url()];
  EXPECT_EQ([delegate _replayPendingActions], YES);
  EXPECT_EQ(take(), Lines());
  EXPECT_NE([delegate launchUrl], nil);
}

TEST_F(Replay, OfTheLaunchIsYesWhateverTheHostAnswers) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"application:openURL:options:", nil];
  host->answerToLaunch = NO;
  [delegate setReplay:1];
  [delegate setLaunchDictionary:@{@"key" : @"value"}];
  EXPECT_EQ([delegate _replayPendingActions], YES);
  EXPECT_EQ(take(), (Lines{kLaunchLine, "host application:didFinishLaunchingWithOptions: app value"}));
  expectCleared();
}

TEST_F(Replay, OfTheURLIsWhatTheHostAnswers) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"application:openURL:options:", nil];
  for (const BOOL answer : {YES, NO}) {
    host->answerToURL = answer;
    [delegate setReplay:2];
    [delegate setLaunchUrl:url()];
    EXPECT_EQ([delegate _replayPendingActions], answer);
    EXPECT_EQ(take(), (Lines{kURLLine, "host application:openURL:options: app notes:1"}));
    expectCleared();
  }
}

TEST_F(Replay, OfTheURLHandsOverSourceAndAnnotationAsFarAsThereAreAny) {
  [host has:@"application:openURL:options:", nil];
  struct Case {
    NSString *source;
    id annotation;
    const char *options;
  };
  for (const Case &each : {
           Case{
               @"com.example", @7,
               " UIApplicationLaunchOptionsAnnotationKey=7 UIApplicationLaunchOptionsSourceApplicationKey=com.example"},
           Case{@"com.example", nil, " UIApplicationLaunchOptionsSourceApplicationKey=com.example"},
           Case{nil, @7, " UIApplicationLaunchOptionsAnnotationKey=7"},
           Case{nil, nil, ""},
       }) {
    [delegate setReplay:2];
    [delegate setLaunchUrl:url()];
    [delegate setLaunchSourceApplication:each.source];
    [delegate setLaunchAnnotation:each.annotation];
    [delegate _replayPendingActions];
    EXPECT_EQ(take(), (Lines{kURLLine, "host application:openURL:options: app notes:1" + std::string(each.options)}));
    expectCleared();
  }
}

TEST_F(Replay, OfLaunchAndURLComesInThisOrderAndIsWhatTheHostAnswersToTheURL) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"application:openURL:options:", nil];
  host->answerToURL = NO;
  [delegate setReplay:3];
  [delegate setLaunchDictionary:@{@"key" : @"value"}];
  [delegate setLaunchUrl:url()];
  EXPECT_EQ([delegate _replayPendingActions], NO);
  EXPECT_EQ(take(), (Lines{kLaunchLine, "host application:didFinishLaunchingWithOptions: app value", kURLLine,
                           "host application:openURL:options: app notes:1"}));
  expectCleared();
}

namespace {

id<QVDelegateObject> replaying = nil;
void holdAnotherURLBack() { [replaying setLaunchUrl:[NSURL URLWithString:@"notes:2"]]; }

} // namespace

TEST_F(Replay, OfTheURLTakesTheOneThatIsHeldBackWhenItsTurnComes) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"application:openURL:options:", nil];
  replaying = delegate;
  host->during = &holdAnotherURLBack;
  [delegate setReplay:3];
  [delegate setLaunchUrl:url()];
  [delegate _replayPendingActions];
  EXPECT_EQ(take(), (Lines{kLaunchLine, "host application:didFinishLaunchingWithOptions: app nil", kURLLine,
                           "host application:openURL:options: app notes:2"}));
  expectCleared();
}

TEST_F(Replay, OfOtherBitsIsYesAndClears) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"application:openURL:options:", nil];
  [delegate setReplay:4];
  [delegate setLaunchUrl:url()];
  EXPECT_EQ([delegate _replayPendingActions], YES);
  EXPECT_EQ(take(), Lines());
  expectCleared();
}

TEST_F(Replay, WithAHostThatRaisesIsNotRepeatedAndTheExceptionGoesOn) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"application:openURL:options:", nil];
  host->raisesFrom = @"application:didFinishLaunchingWithOptions:";
  [delegate setReplay:3];
  EXPECT_EQ(raisedBy(^{
              [delegate _replayPendingActions];
            }), "the host's");
  EXPECT_EQ(take(), (Lines{kLaunchLine, "host application:didFinishLaunchingWithOptions: app nil"}));
  expectCleared();
}

TEST_F(Replay, OfTheLaunchGivesTheHostsOwnAnswerWhereItIsAsked) {
  [host has:@"application:didFinishLaunchingWithOptions:", @"applicationDidFinishLaunching:", nil];
  for (const BOOL answer : {YES, NO}) {
    host->answerToLaunch = answer;
    EXPECT_EQ([delegate _application:app() didFinishLaunchingWithOptions:@{@"key" : @"value"}], answer);
    EXPECT_EQ(take(), Lines{"host application:didFinishLaunchingWithOptions: app value"});
  }
}

TEST_F(Replay, OfTheLaunchFallsBackToTheMethodWithoutOptions) {
  [host has:@"applicationDidFinishLaunching:", nil];
  EXPECT_EQ([delegate _application:app() didFinishLaunchingWithOptions:@{}], YES);
  EXPECT_EQ(take(), Lines{"host applicationDidFinishLaunching: app"});
}

TEST_F(Replay, OfTheLaunchIsYesForAHostThatHasNeither) {
  EXPECT_EQ([delegate _application:app() didFinishLaunchingWithOptions:nil], YES);
  [[UIApplication sharedApplication] setDelegate:nil];
  EXPECT_EQ([delegate _application:app() didFinishLaunchingWithOptions:nil], YES);
  EXPECT_EQ(take(), Lines());
}

TEST_F(Replay, OfTheURLTakesTheFirstMethodThatTheHostHas) {
  NSDictionary *const options = @{
    @"UIApplicationLaunchOptionsSourceApplicationKey" : @"com.example",
    @"UIApplicationLaunchOptionsAnnotationKey" : @7,
  };
  for (const BOOL answer : {YES, NO}) {
    host->answerToURL = answer;
    [host has:@"application:handleOpenURL:", nil];
    EXPECT_EQ([delegate _application:app() openURL:url() options:options], answer);
    EXPECT_EQ(take(), Lines{"host application:handleOpenURL: app notes:1"});
    [host has:@"application:openURL:sourceApplication:annotation:", nil];
    EXPECT_EQ([delegate _application:app() openURL:url() options:options], answer);
    EXPECT_EQ(take(), Lines{"host application:openURL:sourceApplication:annotation: app notes:1 com.example 7"});
    [host has:@"application:openURL:options:", nil];
    EXPECT_EQ([delegate _application:app() openURL:url() options:options], answer);
    EXPECT_EQ(take(), Lines{"host application:openURL:options: app notes:1 "
                            "UIApplicationLaunchOptionsAnnotationKey=7 "
                            "UIApplicationLaunchOptionsSourceApplicationKey=com.example"});
    [host->methods removeAllObjects];
  }
}

TEST_F(Replay, OfTheURLWithoutOptionsHasNoSourceAndNoAnnotation) {
  [host has:@"application:openURL:sourceApplication:annotation:", nil];
  EXPECT_EQ([delegate _application:app() openURL:url() options:nil], YES);
  EXPECT_EQ(take(), Lines{"host application:openURL:sourceApplication:annotation: app notes:1 nil nil"});
}

TEST_F(Replay, OfTheURLIsYesForAHostThatHasNoneOfThem) {
  EXPECT_EQ([delegate _application:app() openURL:url() options:nil], YES);
  [[UIApplication sharedApplication] setDelegate:nil];
  EXPECT_EQ([delegate _application:app() openURL:url() options:nil], YES);
  EXPECT_EQ(take(), Lines());
}
