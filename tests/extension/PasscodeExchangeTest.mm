// From the SDK's wish for a passcode to the result that it is handed, with all of the library's classes in between.
#include "ExtensionTest.h"

#include <algorithm>
#include <filesystem>
#include <thread>

@interface NSObject (QVExchangePolicyObject)
+ (id)instance;
- (void)startPasscodeExtension;
- (void)stopPasscodeExtension;
- (BOOL)isPasscodeExtensionActive;
@end

namespace {

const std::string kHost = "-[QVSBApplicationExtensionViewController presentExtension]";
const std::string kWindow = "-[QVSBPasscodeExtensionWindowViewController displayExtension]";

class PasscodeExchange : public ExtensionTest {
protected:
  void SetUp() override {
    ExtensionTest::SetUp();
    root = [[QVTestController alloc] init];
    root->name = "host";
    root->rotates = YES;
    root->orientations = 30;
    [window setRootViewController:root];
    extension = [[QVTestExtension alloc] init];
    setFound(extension);
    keypad = [[QVTestController alloc] init];
    keypad->name = "keypad";
    take();
  }

  void TearDown() override {
    setFound(nil);
    ExtensionTest::TearDown();
    [extension release];
    [keypad release];
    [root release];
  }

  static id util() { return [NSClassFromString(@"ZorbelUtil") instance]; }

  /// The SDK wants the user's passcode, and the extension's keypad is shown.
  void ask() {
    [util() startPasscodeExtension];
    turnMainQueue();
  }
  void connect() { extension->connected(@"request", keypad, nil); }

  void answer(NSDictionary *userInfo) {
    NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
    [item setUserInfo:userInfo];
    extension->completed(@"request", @[ item ]);
    turnMainQueue();
  }

  void expectRestored() {
    ExtensionTest::expectRestored();
    EXPECT_EQ([keypad presentingViewController], nil);
  }

  void expectResult(id expected) {
    ASSERT_EQ([sdk->results count], 1u);
    EXPECT_TRUE([[sdk->results lastObject] isEqual:expected]) << support::text([[sdk->results lastObject] description]);
  }

  QVTestExtension *extension = nil;
  QVTestController *keypad = nil;
  QVTestController *root = nil;
};

auto openDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

const Lines kAsked = {"sdk getAppInfo",   "look for com.example.manager.passcode",
                      "set interruption", "set cancellation",
                      "set completion",   "instantiate"};

} // namespace

TEST_F(PasscodeExchange, ThatSucceedsHandsTheSDKBothValuesAndLeavesTheHostAsItWas) {
  ask();
  EXPECT_EQ(take(), kAsked);
  connect();
  EXPECT_EQ(take(), (Lines{"log 5 " + kHost + " Presenting view controller", "keypad will appear"}));
  EXPECT_TRUE([[manager() extensionWindow] isKeyWindow]);
  EXPECT_EQ([[keypad view] window], [manager() extensionWindow]);
  answer(@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : @"s", @"extensionMessage" : @"welcome"});
  const Lines heard = take();
  EXPECT_EQ(heard.front(), "log 5 " + kHost + "_block_invoke Completed");
  EXPECT_EQ(heard.back(), "sdk postPasscodeExtensionResult:");
  EXPECT_EQ(std::count(heard.begin(), heard.end(),
                       "log 2 " + kWindow + "_block_invoke: Passcode Extension returned message: welcome"),
            1);
  EXPECT_EQ(std::count(heard.begin(), heard.end(), "keypad did disappear"), 1);
  expectResult(@{@"ak" : @"a", @"sk" : @"s", @"checkInRequired" : @NO});
  expectRestored();
}

TEST_F(PasscodeExchange, ThatLacksItsKeyMaterialEndsBeforeAnythingIsLaunched) {
  [sdk->appInfo release];
  sdk->appInfo = [@{@"ActivityPasteboardKey" : @"key"} retain];
  ask();
  EXPECT_EQ(take(), (Lines{"sdk getAppInfo", "log 0 " + kWindow + ": Passcode Extension FK is invalid.",
                           "sdk postPasscodeExtensionResult:"}));
  expectResult([NSNull null]);
  expectRestored();
}

TEST_F(PasscodeExchange, WithAnIdentifierThatNobodyHasEndsWithACheckIn) {
  setFound(nil);
  ask();
  const Lines heard = take();
  EXPECT_EQ(heard[2], "log 0 " + kHost + " Failed to instantiate extension: there is no such extension");
  EXPECT_EQ(heard[3],
            "log 0 " + kWindow + "_block_invoke: Passcode Extension failed with error: there is no such extension");
  EXPECT_EQ(heard.back(), "sdk postPasscodeExtensionResult:");
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseExtensionMakesNoControllerEndsWithACheckIn) {
  ask();
  extension->connected(@"request", nil, [NSError errorWithDomain:@"QVTest" code:2 userInfo:nil]);
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseExtensionFailsAtOnceEndsWhileItIsBeingShown) {
  extension->whenAsked = [^{
    extension->connected(@"request", nil, [NSError errorWithDomain:@"QVTest" code:2 userInfo:nil]);
  } copy];
  ask();
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseExtensionIsThereAtOnceShowsIt) {
  extension->whenAsked = [^{
    extension->connected(@"request", keypad, nil);
  } copy];
  ask();
  EXPECT_EQ([keypad presentingViewController], [[manager() windowViewController] extensionViewController]);
  answer(@{@"result" : @"FALSE"});
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseExtensionDiesBeforeItIsShownEndsWithACheckIn) {
  ask();
  extension->interrupted(@"request");
  turnMainQueue();
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseExtensionDiesWhileItIsShownEndsWithACheckIn) {
  ask();
  connect();
  extension->interrupted(@"request");
  turnMainQueue();
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseExtensionDiesAfterItsAnswerHasBeenHandedOverOnce) {
  ask();
  connect();
  void (^const interrupted)(id) = [[extension->interrupted copy] autorelease];
  answer(@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : @"s"});
  interrupted(@"request");
  turnMainQueue();
  expectResult(@{@"ak" : @"a", @"sk" : @"s", @"checkInRequired" : @NO});
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseExtensionAnswersTwiceHandsOverTheFirstAnswer) {
  ask();
  connect();
  NSExtensionItem *const second = [[[NSExtensionItem alloc] init] autorelease];
  [second setUserInfo:@{@"result" : @"TRUE", @"ak" : @"2", @"sk" : @"2"}];
  void (^const completed)(id, NSArray *) = [[extension->completed copy] autorelease];
  NSExtensionItem *const first = [[[NSExtensionItem alloc] init] autorelease];
  [first setUserInfo:@{@"result" : @"TRUE", @"ak" : @"1", @"sk" : @"1"}];
  completed(@"request", @[ first ]);
  completed(@"request", @[ second ]);
  turnMainQueue();
  expectResult(@{@"ak" : @"1", @"sk" : @"1", @"checkInRequired" : @NO});
  expectRestored();
}

TEST_F(PasscodeExchange, ThatTheUserCancelsEndsWithACheckIn) {
  ask();
  connect();
  extension->cancelled(@"request", [NSError errorWithDomain:@"QVTest" code:1
                                                   userInfo:@{NSLocalizedDescriptionKey : @"the user went away"}]);
  turnMainQueue();
  const Lines heard = take();
  EXPECT_EQ(std::count(heard.begin(), heard.end(),
                       "log 0 " + kWindow + "_block_invoke: Passcode Extension failed with error: the user went away"),
            1);
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, ThatIsStoppedHearsNoMoreOfTheExtension) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  ask();
  connect();
  [util() stopPasscodeExtension];
  [pool drain];
  expectRestored();
  turnMainQueue();
  answer(@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : @"s"});
  EXPECT_EQ([sdk->results count], 0u);
}

TEST_F(PasscodeExchange, ThatIsStoppedByTheSDKWhichIsHandedTheResultEndsOnce) {
  ask();
  connect();
  sdk->whenHanded = [^{
    [util() stopPasscodeExtension];
  } copy];
  answer(@{@"result" : @"FALSE"});
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, ThatIsAskedForAgainByTheSDKWhichIsHandedTheResultBeginsAnew) {
  ask();
  connect();
  sdk->whenHanded = [^{
    if ([sdk->results count] == 1) [util() startPasscodeExtension];
  } copy];
  answer(@{@"result" : @"FALSE"});
  EXPECT_EQ([util() isPasscodeExtensionActive], YES);
  EXPECT_TRUE([[manager() extensionWindow] isKeyWindow]);
  connect();
  answer(@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : @"s"});
  EXPECT_EQ([sdk->results count], 2u);
  expectRestored();
}

TEST_F(PasscodeExchange, WhoseControllerFailsOnAnotherThreadEndsThere) {
  ask();
  std::thread([this] {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    extension->connected(@"request", nil, nil);
    [pool drain];
  }).join();
  expectResult(@{@"checkInRequired" : @YES});
  expectRestored();
}

TEST_F(PasscodeExchange, ThatPassesWithoutAValueFailsAndCanStillBeStopped) {
  ask();
  connect();
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:@{@"result" : @"TRUE", @"ak" : @"a"}];
  const CompletionHandler handler = [[[manager() windowViewController] extensionViewController] handler];
  EXPECT_TRUE(raisedBy([&] { handler(YES, @[ item ], nil); }).starts_with("NSInvalidArgumentException"));
  EXPECT_EQ([sdk->results count], 0u);
  [util() stopPasscodeExtension];
  expectRestored();
}

TEST_F(PasscodeExchange, AmongAlertsAndKeyWindowsOfTheHostLeavesThemAsTheyWere) {
  ask();
  connect();
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  UIWindow *const other = show(UIWindowLevelNormal);
  EXPECT_EQ([alert windowLevel], UIWindowLevelNormal);
  EXPECT_TRUE([[manager() extensionWindow] isKeyWindow]);
  EXPECT_EQ([[[UIApplication sharedApplication] windows] lastObject], [manager() extensionWindow]);
  answer(@{@"result" : @"FALSE"});
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
  EXPECT_TRUE([other isKeyWindow]);
}

TEST_F(PasscodeExchange, LeavesNothingBehindHoweverOftenAndHoweverItEnds) {
  setFound(nil);
  [extension release];
  extension = nil;
  countControllers();
  const auto round = [this](int number) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    extension = [[QVTestExtension alloc] init];
    setFound(number % 6 == 5 ? nil : extension);
    ask();
    if (number % 6 == 1 || number % 6 == 3) connect();
    switch (number % 6) {
    case 0:
    case 1:
      answer(@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : @"s"});
      break;
    case 2:
      extension->interrupted(@"request");
      break;
    case 3:
      extension->cancelled(@"request", nil);
      break;
    case 4:
      extension->connected(@"request", nil, nil);
      break;
    default:
      break;
    }
    turnMainQueue();
    expectRestored();
    setFound(nil);
    [extension release];
    extension = nil;
    [pool drain];
  };
  // Once each way, for what is kept from the first time on.
  for (int number = 0; number < 6; ++number)
    round(number);
  EXPECT_EQ(liveControllers(), 0);
  EXPECT_EQ([QVTestExtension live], 0);
  const auto windows = [[[UIApplication sharedApplication] windows] count];
  const auto descriptors = openDescriptors();
  for (int number = 0; number < 200; ++number)
    round(number);
  EXPECT_EQ(liveControllers(), 0);
  EXPECT_EQ([QVTestExtension live], 0);
  EXPECT_EQ([[[UIApplication sharedApplication] windows] count], windows);
  EXPECT_EQ(openDescriptors(), descriptors);
  EXPECT_EQ([sdk->results count], 206u);
  EXPECT_EQ(countedControllers(), 2 * 206);
}
