// Each policy's values and the answers that follow.
#include "Policy.h"

#include <limits>

namespace {

using Decisions = Policy;

constexpr NSInteger kLowest = std::numeric_limits<NSInteger>::min();
constexpr NSInteger kHighest = std::numeric_limits<NSInteger>::max();
// Beyond 32 bits, and ending in those of 1 and 2.
constexpr NSInteger kLooksLikeOne = (NSInteger{1} << 32) + 1;
constexpr NSInteger kLooksLikeTwo = (NSInteger{1} << 32) + 2;

} // namespace

TEST_F(Decisions, ThePasteboardIsAllowedUnderPoliciesOneAndTwoAndNoOther) {
  for (const NSInteger policy : {NSInteger{1}, NSInteger{2}}) {
    sdk->pasteboardPolicy = policy;
    EXPECT_EQ([util allowsPasteboard], YES) << policy;
  }
  for (const NSInteger policy :
       {NSInteger{0}, NSInteger{3}, NSInteger{4}, NSInteger{-1}, kLowest, kHighest, kLooksLikeOne, kLooksLikeTwo}) {
    sdk->pasteboardPolicy = policy;
    EXPECT_EQ([util allowsPasteboard], NO) << policy;
  }
}

TEST_F(Decisions, PrintingIsAllowedUnderPolicyOneAndNoOther) {
  sdk->printPolicy = 1;
  EXPECT_EQ([util allowsPrinting], YES);
  for (const NSInteger policy :
       {NSInteger{0}, NSInteger{2}, NSInteger{3}, NSInteger{-1}, kLowest, kHighest, kLooksLikeOne}) {
    sdk->printPolicy = policy;
    EXPECT_EQ([util allowsPrinting], NO) << policy;
  }
}

TEST_F(Decisions, OpenInPolicyZeroRefusesEveryIdentifier) {
  sdk->openInWhitelist = [@[ @"com.example", @"mail" ] retain];
  EXPECT_EQ([util allowsOpenInWithAppId:@"com.example"], NO);
  EXPECT_EQ([util allowsOpenInWithAppId:@"mail"], NO);
  EXPECT_EQ([util allowsOpenInWithAppId:@""], NO);
  EXPECT_EQ([util allowsOpenInWithAppId:nil], NO);
}

TEST_F(Decisions, OpenInPolicyOneAllowsEveryIdentifierAndNone) {
  sdk->openInPolicy = 1;
  EXPECT_EQ([util allowsOpenInWithAppId:@"com.example"], YES);
  EXPECT_EQ([util allowsOpenInWithAppId:@""], YES);
  EXPECT_EQ([util allowsOpenInWithAppId:nil], YES);
  sdk->openInWhitelist = [@[] retain];
  EXPECT_EQ([util allowsOpenInWithAppId:@"com.example"], YES);
}

TEST_F(Decisions, OpenInPolicyTwoAllowsWhatTheWhitelistMatchesAndNothingElse) {
  sdk->openInPolicy = 2;
  sdk->openInWhitelist = [@[ @"com.example", @"mail" ] retain];
  EXPECT_EQ([util allowsOpenInWithAppId:@"com.example.notes"], YES);
  EXPECT_EQ([util allowsOpenInWithAppId:@"mail"], YES);
  EXPECT_EQ([util allowsOpenInWithAppId:@"org.example"], NO);
  EXPECT_EQ([util allowsOpenInWithAppId:@""], NO);
  EXPECT_EQ([util allowsOpenInWithAppId:nil], NO);
}

TEST_F(Decisions, AnyOtherOpenInPolicyRefusesEveryIdentifier) {
  sdk->openInWhitelist = [@[ @"com.example" ] retain];
  for (const NSInteger policy : {NSInteger{3}, NSInteger{-1}, kLowest, kHighest, kLooksLikeOne, kLooksLikeTwo}) {
    sdk->openInPolicy = policy;
    EXPECT_EQ([util allowsOpenInWithAppId:@"com.example"], NO) << policy;
    EXPECT_EQ([util allowsOpenInWithAppId:nil], NO) << policy;
  }
}

TEST_F(Decisions, FollowAPolicyThatChangesAtTheNextQuestion) {
  sdk->pasteboardPolicy = 1;
  sdk->printPolicy = 1;
  sdk->openInPolicy = 1;
  EXPECT_TRUE([util allowsPasteboard] && [util allowsPrinting] && [util allowsOpenInWithAppId:@"a"]);
  sdk->pasteboardPolicy = 0;
  sdk->printPolicy = 0;
  sdk->openInPolicy = 2;
  sdk->openInWhitelist = [@[ @"b" ] retain];
  EXPECT_FALSE([util allowsPasteboard] || [util allowsPrinting] || [util allowsOpenInWithAppId:@"a"]);
  [sdk->openInWhitelist release];
  sdk->openInWhitelist = [@[ @"a" ] retain];
  EXPECT_TRUE([util allowsOpenInWithAppId:@"a"]);
}

namespace {

/// Decisions under policies that allow everything.
class Permissive : public Policy {
protected:
  void SetUp() override {
    Policy::SetUp();
    sdk->pasteboardPolicy = 1;
    sdk->printPolicy = 1;
    sdk->openInPolicy = 1;
  }

  void expectEverything(BOOL answer) {
    EXPECT_EQ([util allowsPasteboard], answer);
    EXPECT_EQ([util allowsPrinting], answer);
    EXPECT_EQ([util allowsOpenInWithAppId:@"com.example"], answer);
    EXPECT_EQ([util allowsOpenInWithAppId:nil], answer);
  }
};

QVTestSDK *lastReference = nil;
void dropLastReference() {
  [lastReference release];
  lastReference = nil;
}

} // namespace

TEST_F(Permissive, IsAllowedByAnSDKThatIsReady) { expectEverything(YES); }

TEST_F(Permissive, IsRefusedBeforeThereIsAnSDK) {
  [util setZorbel:nil];
  expectEverything(NO);
}

TEST_F(Permissive, IsRefusedAsLongAsTheSDKIsNotReady) {
  sdk->ready = NO;
  expectEverything(NO);
  sdk->ready = YES;
  expectEverything(YES);
}

TEST_F(Permissive, IsRefusedOnceTheSDKHasBeenReleased) {
  releaseSDK();
  EXPECT_EQ([QVTestSDK live], 0);
  EXPECT_EQ([util zorbel], nil);
  expectEverything(NO);
}

TEST_F(Permissive, IsAllowedAgainByAnSDKThatTakesThePlaceOfAReleasedOne) {
  releaseSDK();
  sdk = [[QVTestSDK alloc] init];
  sdk->pasteboardPolicy = sdk->printPolicy = sdk->openInPolicy = 1;
  [util setZorbel:sdk];
  expectEverything(YES);
}

TEST_F(Permissive, HasNoClaimOnTheSDK) {
  NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
  expectEverything(YES);
  EXPECT_EQ([util zorbel], sdk);
  [inner drain];
  EXPECT_EQ([sdk retainCount], 1u);
}

TEST_F(Permissive, KeepsAnSDKThatIsReleasedInTheMiddleOfAQuestionUntilItIsAnswered) {
  lastReference = sdk;
  sdk->whenAskedWhetherReady = &dropLastReference;
  sdk = nil;
  EXPECT_EQ([util allowsPasteboard], YES);
  EXPECT_EQ([QVTestSDK live], 0);
  expectEverything(NO);
}

TEST_F(Permissive, KeepsAnSDKThatIsReleasedWhileItsWhitelistIsReadUntilItIsAnswered) {
  sdk->openInPolicy = 2;
  sdk->openInWhitelist = [@[ @"org.example", @"com.example" ] retain];
  lastReference = sdk;
  sdk->whenAskedWhetherReady = &dropLastReference;
  sdk = nil;
  EXPECT_EQ([util _whitelistApprovedAppId:@"com.example.notes"], YES);
  EXPECT_EQ([QVTestSDK live], 0);
  EXPECT_EQ([util _whitelistApprovedAppId:@"com.example.notes"], NO);
}
