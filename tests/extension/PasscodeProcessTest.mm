// The whole of it with an extension in a process of its own, which does what the pasteboard key says.
#include "ExtensionTest.h"

#include "device/core/RunLoop.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <unistd.h>

@interface NSObject (QVProcessPolicyObject)
+ (id)instance;
- (void)startPasscodeExtension;
- (void)stopPasscodeExtension;
@end

namespace {

const std::string kHost = "-[QVSBApplicationExtensionViewController presentExtension]";
const std::string kWindow = "-[QVSBPasscodeExtensionWindowViewController displayExtension]";

// A sanitizer makes each process several times as slow to start.
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr int kRounds = 20;
#else
constexpr int kRounds = 200;
#endif

class PasscodeProcess : public ExtensionTest {
protected:
  void SetUp() override {
    ExtensionTest::SetUp();
    wait([] { return processes().empty(); });
  }

  bool playsTheExtension() const override { return false; }

  static id util() { return [NSClassFromString(@"ZorbelUtil") instance]; }

  void start(id pasteboardKey, id identifier = @"com.example.answerer.passcode") {
    [sdk->appInfo release];
    sdk->appInfo = [@{
      @"PasscodeExtensionBundleId" : identifier,
      @"PasscodeExtFKData" : [@"key material" dataUsingEncoding:NSUTF8StringEncoding],
      @"ActivityPasteboardKey" : pasteboardKey,
    } retain];
    [util() startPasscodeExtension];
  }

  /// Turns the main run loop until it is so; false when it never was.
  static bool wait(const std::function<bool()> &condition) {
    const auto *const asked = &condition;
    return runLoopUntil(^{
      NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
      const bool is = (*asked)();
      [pool drain];
      return is;
    });
  }
  /// What is let go of goes at once, as at the end of a turn of the run loop.
  static void stop() {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    [util() stopPasscodeExtension];
    [pool drain];
  }

  bool waitForResult() {
    return wait([this] { return [sdk hasResults]; });
  }
  bool waitUntilShown() {
    return wait([] { return keypad() != nil; });
  }

  /// What stands for the extension's view controller, while it is shown.
  static UIViewController *keypad() {
    return [[[manager() windowViewController] extensionViewController] presentedViewController];
  }

  /// The extension's processes.
  static std::vector<pid_t> processes() { return support::processesOf("Answering"); }
  static bool waitUntilTheyHaveGone() {
    return wait([] { return processes().empty(); });
  }

  void expectResult(id expected) {
    ASSERT_TRUE(waitForResult());
    EXPECT_EQ([sdk->results count], 1u);
    EXPECT_TRUE([[sdk->results lastObject] isEqual:expected]) << support::text([[sdk->results lastObject] description]);
    expectRestored();
    EXPECT_TRUE(waitUntilTheyHaveGone());
  }
  void expectCheckIn() {
    expectResult(@{@"checkInRequired" : @YES});
  }

  static bool logged(const Lines &lines, const std::string &line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }
  static auto openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  }
};

} // namespace

TEST_F(PasscodeProcess, ThatLetsTheUserPassHasTheWholeRequestAndBothItsValuesReachTheSDK) {
  start(@"pass");
  ASSERT_TRUE(waitForResult());
  NSDictionary *const result = [sdk->results lastObject];
  EXPECT_EQ([result count], 3u);
  EXPECT_TRUE([[result objectForKey:@"checkInRequired"] isEqual:@NO]);
  EXPECT_GT([[result objectForKey:@"ak"] intValue], 0);
  EXPECT_NE([[result objectForKey:@"ak"] intValue], getpid());
  NSDictionary *const request = [result objectForKey:@"sk"];
  EXPECT_TRUE([[request objectForKey:@"FK"] isEqual:[@"key material" dataUsingEncoding:NSUTF8StringEncoding]]);
  EXPECT_TRUE([[request objectForKey:@"ActivityPasteboardKey"] isEqual:@"pass"]);
  const Lines heard = take();
  EXPECT_TRUE(logged(heard, "log 5 " + kHost + " Presenting view controller"));
  EXPECT_TRUE(logged(heard, "log 5 " + kHost + "_block_invoke Completed"));
  EXPECT_TRUE(logged(heard, "log 2 " + kWindow + "_block_invoke: Passcode Extension returned message: welcome"));
  EXPECT_EQ(heard.back(), "sdk postPasscodeExtensionResult:");
  expectRestored();
  EXPECT_TRUE(waitUntilTheyHaveGone());
}

TEST_F(PasscodeProcess, IsShownAboveTheHostWhileItRuns) {
  start(@"wait");
  ASSERT_TRUE(waitUntilShown());
  EXPECT_EQ([[keypad() view] window], [manager() extensionWindow]);
  EXPECT_TRUE([[manager() extensionWindow] isKeyWindow]);
  EXPECT_EQ([[[UIApplication sharedApplication] windows] lastObject], [manager() extensionWindow]);
  EXPECT_EQ(processes().size(), 1u);
}

TEST_F(PasscodeProcess, ThatRefusesTheUserAsksForACheckIn) {
  start(@"refuse");
  expectCheckIn();
  EXPECT_TRUE(logged(take(), "log 2 " + kWindow +
                                 "_block_invoke: Passcode Extension returned message: two tries "
                                 "left"));
}

TEST_F(PasscodeProcess, ThatAnswersInAnotherCaseAsksForACheckIn) {
  start(@"pass in lower case");
  expectCheckIn();
}

TEST_F(PasscodeProcess, ThatPassesWithoutAValueRaisesInTheHostsMainQueueAndIsShownUntilItIsStopped) {
  for (const std::string missing : {"ak", "sk"}) {
    start([NSString stringWithFormat:@"pass without %s", missing.c_str()]);
    EXPECT_EQ(raisedBy([] { wait([] { return false; }); }),
              "NSInvalidArgumentException: Tried to add nil value for key '" + missing + "' to dictionary");
    EXPECT_EQ([manager() isPasscodeExtensionActive], YES);
    EXPECT_TRUE([[manager() extensionWindow] isKeyWindow]);
    stop();
    expectRestored();
    EXPECT_TRUE(waitUntilTheyHaveGone());
    EXPECT_EQ([sdk->results count], 0u);
  }
}

TEST_F(PasscodeProcess, ThatAnswersTwiceIsHeardOnce) {
  start(@"pass, then refuse");
  ASSERT_TRUE(waitForResult());
  EXPECT_TRUE(waitUntilTheyHaveGone());
  EXPECT_EQ([sdk->results count], 1u);
  EXPECT_TRUE([[[sdk->results lastObject] objectForKey:@"checkInRequired"] isEqual:@NO]);
  expectRestored();
}

TEST_F(PasscodeProcess, ThatDiesAfterItsAnswerIsHeard) {
  start(@"pass, then crash");
  ASSERT_TRUE(waitForResult());
  EXPECT_TRUE(waitUntilTheyHaveGone());
  turnMainQueue();
  EXPECT_EQ([sdk->results count], 1u);
  EXPECT_TRUE([[[sdk->results lastObject] objectForKey:@"checkInRequired"] isEqual:@NO]);
  expectRestored();
}

TEST_F(PasscodeProcess, ThatAnswersNothingAsksForACheckIn) {
  start(@"answer nothing");
  expectCheckIn();
}

TEST_F(PasscodeProcess, WhoseAnswerIsNoDictionaryAsksForACheckIn) {
  start(@"answer a text");
  expectCheckIn();
}

TEST_F(PasscodeProcess, WhoseItemIsNoneAsksForACheckIn) {
  start(@"answer a text for an item");
  expectCheckIn();
}

TEST_F(PasscodeProcess, ThatTheUserCancelsAsksForACheckIn) {
  start(@"cancel");
  expectCheckIn();
  const Lines heard = take();
  EXPECT_TRUE(logged(heard, "log 0 " + kHost + "_block_invoke Cancelled"));
  EXPECT_TRUE(logged(heard, "log 0 " + kWindow +
                                "_block_invoke: Passcode Extension failed with error: the user went "
                                "away"));
}

TEST_F(PasscodeProcess, ThatDiesBeforeItIsShownAsksForACheckIn) {
  start(@"crash before it is shown");
  expectCheckIn();
  EXPECT_FALSE(logged(take(), "log 5 " + kHost + " Presenting view controller"));
}

TEST_F(PasscodeProcess, ThatDiesWhileItIsShownAsksForACheckIn) {
  for (NSString *death : {@"crash", @"end"}) {
    start(death);
    expectCheckIn();
    EXPECT_TRUE(logged(take(), "log 0 " + kHost + "_block_invoke Interrupted"));
    [sdk->results removeAllObjects];
  }
}

TEST_F(PasscodeProcess, ThatTheSystemEndsAsksForACheckIn) {
  start(@"wait");
  ASSERT_TRUE(waitUntilShown());
  ASSERT_EQ(processes().size(), 1u);
  kill(processes().front(), SIGKILL);
  expectCheckIn();
  EXPECT_TRUE(logged(take(), "log 0 " + kHost + "_block_invoke Interrupted"));
}

TEST_F(PasscodeProcess, ThatNeverAnswersGoesWhenItIsStopped) {
  start(@"wait");
  ASSERT_TRUE(waitUntilShown());
  stop();
  expectRestored();
  EXPECT_TRUE(waitUntilTheyHaveGone());
  turnMainQueue();
  EXPECT_EQ([sdk->results count], 0u);
}

TEST_F(PasscodeProcess, ThatIsStoppedWhileItStartsGoes) {
  start(@"wait");
  turnMainQueue();
  stop();
  expectRestored();
  EXPECT_TRUE(waitUntilTheyHaveGone());
  EXPECT_EQ([sdk->results count], 0u);
}

TEST_F(PasscodeProcess, OfAnIdentifierThatNobodyHasOrThatIsNoneAsksForACheckIn) {
  for (id identifier : { (id) @"com.example.missing", (id) @"", (id) @"../answerer", (id) @7 }) {
    start(@"pass", identifier);
    expectCheckIn();
    EXPECT_EQ(processes().size(), 0u);
    [sdk->results removeAllObjects];
  }
}

TEST_F(PasscodeProcess, LeavesNothingBehindHoweverOften) {
  const auto round = [this](NSString *what) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    start(what);
    EXPECT_TRUE(waitForResult());
    expectRestored();
    [sdk->results removeAllObjects];
    [pool drain];
  };
  countControllers();
  round(@"pass");
  ASSERT_TRUE(waitUntilTheyHaveGone());
  const auto windows = [[[UIApplication sharedApplication] windows] count];
  const auto descriptors = openDescriptors();
  NSString *const ends[] = {@"pass", @"refuse", @"cancel", @"crash"};
  for (int number = 0; number < kRounds; ++number)
    round(ends[number % 4]);
  EXPECT_TRUE(waitUntilTheyHaveGone());
  EXPECT_TRUE(wait([] { return liveControllers() == 0; })) << liveControllers();
  EXPECT_EQ(countedControllers(), 2 * (kRounds + 1));
  EXPECT_EQ([[[UIApplication sharedApplication] windows] count], windows);
  // The first round's may still have been open when they were counted; one a round would be many more.
  EXPECT_TRUE(wait([&] { return openDescriptors() <= descriptors; })) << openDescriptors() << " now, " << descriptors;
}
