// What the SDK is told of an extension's answer.
#include "PasscodeWindow.h"

namespace {

const std::string kCompletion = "-[QVSBPasscodeExtensionWindowViewController displayExtension]_block_invoke";

std::string message(const std::string &text) {
  return "log 2 " + kCompletion + ": Passcode Extension returned message: " + text;
}
const std::string kHanded = "sdk postPasscodeExtensionResult:";

class PasscodeAnswer : public PasscodeWindow {
protected:
  void SetUp() override {
    PasscodeWindow::SetUp();
    [controller displayExtension];
    take();
  }

  /// The extension's request ends.
  void end(BOOL completed, NSArray *items, NSError *error) {
    [[controller extensionViewController] handler](completed, items, error);
  }

  /// The extension answers with an item that holds this.
  void answer(id userInfo) {
    NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
    [item setUserInfo:userInfo];
    end(YES, @[ item ], nil);
  }

  /// The one result that the SDK was handed.
  NSDictionary *result() {
    EXPECT_EQ([sdk->results count], 1u);
    return [sdk->results lastObject];
  }

  void expectCheckIn() {
    EXPECT_TRUE([result() isEqual:@{@"checkInRequired" : @YES}]) << support::text([result() description]);
  }
};

} // namespace

TEST_F(PasscodeAnswer, ThatTheUserPassedHandsBothValuesOnUnchanged) {
  NSData *const ak = [@"first" dataUsingEncoding:NSUTF8StringEncoding];
  NSArray *const sk = @[ @"second" ];
  answer(@{@"result" : @"TRUE", @"ak" : ak, @"sk" : sk, @"extensionMessage" : @"Welcome back", @"more" : @1});
  EXPECT_EQ(take(), (Lines{message("Welcome back"), kHanded}));
  EXPECT_EQ([result() count], 3u);
  EXPECT_EQ([result() objectForKey:@"ak"], ak);
  EXPECT_EQ([result() objectForKey:@"sk"], sk);
  NSNumber *const checkIn = [result() objectForKey:@"checkInRequired"];
  EXPECT_TRUE([checkIn isEqual:@NO]);
  EXPECT_STREQ([checkIn objCType], [[NSNumber numberWithBool:NO] objCType]);
}

TEST_F(PasscodeAnswer, InAnotherCaseIsThatTheUserDidNotPass) {
  answer(@{@"result" : @"true", @"ak" : @"a", @"sk" : @"s"});
  EXPECT_EQ(take(), (Lines{message("(null)"), kHanded}));
  expectCheckIn();
}

TEST_F(PasscodeAnswer, OfMoreThanTheWordIsThatTheUserDidNotPass) {
  for (NSString *text : {@"TRUE ", @" TRUE", @"TRUEST", @"", @"YES", @"1", @"FALSE"}) {
    [sdk->results removeAllObjects];
    answer(@{@"result" : text, @"ak" : @"a", @"sk" : @"s"});
    expectCheckIn();
  }
}

TEST_F(PasscodeAnswer, WhoseResultIsNoStringIsThatTheUserDidNotPass) {
  for (id value : { (id) @YES, (id) @[ @"TRUE" ], (id) @{@"TRUE" : @"TRUE"}, (id)[NSNull null] }) {
    [sdk->results removeAllObjects];
    answer(@{@"result" : value, @"ak" : @"a", @"sk" : @"s"});
    expectCheckIn();
  }
}

TEST_F(PasscodeAnswer, WithoutAResultIsThatTheUserDidNotPassAndItsMessageIsLogged) {
  answer(@{@"extensionMessage" : @"Locked out", @"ak" : @"a", @"sk" : @"s"});
  EXPECT_EQ(take(), (Lines{message("Locked out"), kHanded}));
  expectCheckIn();
}

TEST_F(PasscodeAnswer, WithAMessageThatIsNoStringIsLoggedAsThatDescribesItself) {
  answer(@{@"extensionMessage" : @42});
  EXPECT_EQ(take().front(), message("42"));
}

TEST_F(PasscodeAnswer, OfNoItemsAsksForACheckIn) {
  end(YES, @[], nil);
  EXPECT_EQ(take(), (Lines{message("(null)"), kHanded}));
  expectCheckIn();
  [sdk->results removeAllObjects];
  end(YES, nil, nil);
  EXPECT_EQ(take(), (Lines{message("(null)"), kHanded}));
  expectCheckIn();
}

TEST_F(PasscodeAnswer, WithoutUserInformationAsksForACheckIn) {
  answer(nil);
  EXPECT_EQ(take(), (Lines{message("(null)"), kHanded}));
  expectCheckIn();
}

TEST_F(PasscodeAnswer, OfWhichOnlyTheFirstItemCounts) {
  NSExtensionItem *const first = [[[NSExtensionItem alloc] init] autorelease];
  NSExtensionItem *const second = [[[NSExtensionItem alloc] init] autorelease];
  [second setUserInfo:@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : @"s"}];
  end(YES, @[ first, second ], nil);
  expectCheckIn();
  [sdk->results removeAllObjects];
  end(YES, @[ second, first ], nil);
  EXPECT_EQ([result() count], 3u);
}

TEST_F(PasscodeAnswer, ThatIsNoDictionaryAsksForACheckIn) {
  replaceMethod([NSExtensionItem class], "userInfo",
                reinterpret_cast<IMP>(+[](id, SEL) -> id { return @"result=TRUE"; }));
  answer(nil);
  EXPECT_EQ(take(), (Lines{message("(null)"), kHanded}));
  expectCheckIn();
}

TEST_F(PasscodeAnswer, WhoseItemIsNoneAsksForACheckIn) {
  end(YES, @[ @"TRUE" ], nil);
  EXPECT_EQ(take(), (Lines{message("(null)"), kHanded}));
  expectCheckIn();
}

TEST_F(PasscodeAnswer, ThatPassesWithoutAkFailsTheInsertion) {
  EXPECT_TRUE(
      raisedBy([&] { answer(@{@"result" : @"TRUE", @"sk" : @"s"}); }).starts_with("NSInvalidArgumentException"));
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PasscodeAnswer, ThatPassesWithoutSkFailsTheInsertion) {
  EXPECT_TRUE(
      raisedBy([&] { answer(@{@"result" : @"TRUE", @"ak" : @"a"}); }).starts_with("NSInvalidArgumentException"));
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PasscodeAnswer, ThatDoesNotPassMayLackBoth) {
  answer(@{@"result" : @"FALSE"});
  expectCheckIn();
}

TEST_F(PasscodeAnswer, ThatFailedIsLoggedWithTheErrorsDescriptionAndAsksForACheckIn) {
  NSError *const error = [NSError errorWithDomain:@"QVTest" code:1
                                         userInfo:@{NSLocalizedDescriptionKey : @"the user went away"}];
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : @"s", @"extensionMessage" : @"not heard"}];
  end(NO, @[ item ], error);
  EXPECT_EQ(take(), (Lines{"log 0 " + kCompletion + ": Passcode Extension failed with error: the user went away",
                           message("(null)"), kHanded}));
  expectCheckIn();
}

TEST_F(PasscodeAnswer, ThatFailedWithoutAnErrorIsLoggedSo) {
  end(NO, nil, nil);
  EXPECT_EQ(take(), (Lines{"log 0 " + kCompletion + ": Passcode Extension failed with error: (null)", message("(null)"),
                           kHanded}));
  expectCheckIn();
}
