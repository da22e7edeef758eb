// The two launch methods.
#include "Lifecycle.h"

#include <Zorbel/QVDevicePolicies.h>
#include <Zorbel/QVDeviceRecord.h>

namespace {

const char *const kWill = "-[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]";
const char *const kDid = "-[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]";
const char *const kDone =
    "5 Done executing AppDelegate's original implementation for application:didFinishLaunchingWithOptions:";
const char *const kURLKey = "UIApplicationLaunchOptionsURLKey";

/// The calls at the SDK of that name.
NSArray *callsOf(NSString *name) {
  NSMutableArray *const calls = [NSMutableArray array];
  for (NSDictionary *call in QVDeviceZorbelRecord())
    if ([[call objectForKey:@"call"] isEqual:name]) [calls addObject:call];
  return calls;
}

/// Has it heard where the start of the SDK stands among what the host hears.
void hearWhetherTheSDKHasStarted() {
  hear([callsOf(@"startWithLaunchOptions:") count] ? "the SDK has started" : "the SDK has not started");
}

class Launch : public Lifecycle {
protected:
  void SetUp() override {
    Lifecycle::SetUp();
    QVDeviceZorbelSetPolicies(@"{\"appSchemes\": [\"zorbel\"]}");
  }

  BOOL willLaunch(id delegate, NSDictionary *options) {
    return [delegate application:application willFinishLaunchingWithOptions:options];
  }
  BOOL didLaunch(id delegate, NSDictionary *options) {
    return [delegate application:application didFinishLaunchingWithOptions:options];
  }

  NSDictionary *with(NSString *url) { return @{UIApplicationLaunchOptionsURLKey : [NSURL URLWithString:url]}; }
};

} // namespace

TEST_F(Launch, AsksTheHostWhetherItWillFinishAndReturnsItsAnswer) {
  QVFullHost *const host = make<QVFullHost>();
  setDelegate(host);
  for (const BOOL answer : {YES, NO}) {
    host->answer = answer;
    EXPECT_EQ(willLaunch(host, nil), answer);
  }
  EXPECT_EQ(heard(), (Lines{"application:willFinishLaunchingWithOptions: nil",
                            "application:willFinishLaunchingWithOptions: nil"}));
  const std::string line = std::string("3 ") + kWill;
  EXPECT_EQ(support::log(), (Lines{line, "5 (null)", line, "5 (null)"}));
}

TEST_F(Launch, WillFinishWithAHostThatHasNoSay) {
  QVEmptyHost *const host = make<QVEmptyHost>();
  setDelegate(host);
  NSDictionary *const options = with(@"https://example.com/a");
  EXPECT_EQ(willLaunch(host, options), YES);
  EXPECT_EQ(support::log(), (Lines{std::string("3 ") + kWill, "5 " + shown(options)}));
}

TEST_F(Launch, WillFinishHandsTheHostItsOptionsUnlessTheyHoldAURLOfTheSDK) {
  QVFullHost *const host = make<QVFullHost>();
  setDelegate(host);
  willLaunch(host, with(@"https://example.com/a"));
  willLaunch(host, with(@"zorbel://check-in"));
  willLaunch(host, @{UIApplicationLaunchOptionsSourceApplicationKey : @"com.example.mail"});
  EXPECT_EQ(heard(), (Lines{std::string("application:willFinishLaunchingWithOptions: ") + kURLKey,
                            "application:willFinishLaunchingWithOptions: nil",
                            "application:willFinishLaunchingWithOptions: "
                            "UIApplicationLaunchOptionsSourceApplicationKey"}));
}

TEST_F(Launch, StartsTheSDKWithTheOptionsAndThenLetsTheHostLaunchInTheSameCall) {
  QVFullHost *const host = make<QVFullHost>();
  host->whenLaunching = &hearWhetherTheSDKHasStarted;
  setDelegate(host);
  NSDictionary *const options = with(@"https://example.com/a");
  EXPECT_EQ(didLaunch(host, options), NO);
  EXPECT_EQ(heard(),
            (Lines{std::string("application:didFinishLaunchingWithOptions: ") + kURLKey, "the SDK has started"}));
  NSArray *const starts = callsOf(@"startWithLaunchOptions:");
  ASSERT_EQ([starts count], 1u);
  EXPECT_EQ([[[starts objectAtIndex:0] objectForKey:@"launchOptions"] isEqual:options], YES);
  EXPECT_EQ([ZorbelDelegate() originalDelegate], host);
  EXPECT_EQ(support::log(),
            (Lines{std::string("3 ") + kDid, std::string("5 ") + kDid + " Launch options: " + shown(options),
                   "0 -[UIApplication(Sandbox) sb_delegate] Returning delegate " + shown(host),
                   "3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]", "5 " + shown(options), kDone}));
}

TEST_F(Launch, ReturnsTheHostsAnswerOrYESWithoutOne) {
  QVFullHost *const host = make<QVFullHost>();
  setDelegate(host);
  for (const BOOL answer : {YES, NO}) {
    host->answer = answer;
    EXPECT_EQ(didLaunch(host, nil), answer);
  }
  QVEmptyHost *const empty = make<QVEmptyHost>();
  UIApplicationDelegateSwizzle(empty);
  EXPECT_EQ(didLaunch(empty, nil), YES);
}

TEST_F(Launch, WithAURLOfTheSDKStartsTheSDKWithItAndTheHostWithoutOptions) {
  QVFullHost *const host = make<QVFullHost>();
  setDelegate(host);
  NSDictionary *const options = with(@"zorbel://check-in");
  didLaunch(host, options);
  EXPECT_EQ(heard(), (Lines{"application:didFinishLaunchingWithOptions: nil"}));
  NSDictionary *const start = [callsOf(@"startWithLaunchOptions:") lastObject];
  EXPECT_EQ([[start objectForKey:@"launchOptions"] isEqual:options], YES);
  const Lines lines = support::log(5);
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[lines.size() - 2], "5 App launched with Zorbel URL zorbel://check-in");
  EXPECT_EQ(lines.back(), kDone);
}

TEST_F(Launch, MakesTheSDKsSideOnce) {
  QVFullHost *const host = make<QVFullHost>();
  setDelegate(host);
  EXPECT_EQ(ZorbelDelegate(), nil);
  didLaunch(host, nil);
  id const made = ZorbelDelegate();
  EXPECT_EQ(object_getClass(made), NSClassFromString(@"QVZorbelDelegate"));
  QVEmptyHost *const another = make<QVEmptyHost>();
  UIApplicationDelegateSwizzle(another);
  didLaunch(another, nil);
  EXPECT_EQ(ZorbelDelegate(), made);
  EXPECT_EQ([ZorbelDelegate() originalDelegate], host);
  EXPECT_EQ([callsOf(@"startWithLaunchOptions:") count], 1u);
}

TEST_F(Launch, OfAHostThatRaisesHasStartedTheSDKAndLetsTheExceptionGoOn) {
  QVRaisingHost *const host = make<QVRaisingHost>();
  setDelegate(host);
  EXPECT_EQ(raisedBy([&] { willLaunch(host, nil); }), [QVRaisingHost trouble]);
  EXPECT_EQ(raisedBy([&] { didLaunch(host, nil); }), [QVRaisingHost trouble]);
  EXPECT_EQ([callsOf(@"startWithLaunchOptions:") count], 1u);
  EXPECT_NE(ZorbelDelegate(), nil);
  EXPECT_NE(support::log(5).back(), kDone);
}
