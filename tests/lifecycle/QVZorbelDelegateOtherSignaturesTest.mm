// Hosts whose methods have the right name and another signature. Called with what they do not take, they would crash
// the app, and their results would be read from wherever one of another type is left.
#include "DelegateTest.h"

#include <objc/runtime.h>

namespace {

void noteSelector(SEL selector) { note("host " + std::string(sel_getName(selector))); }

/// Answers nothing to a configuration, and takes all of it.
void noteVoid(id, SEL selector, id) { noteSelector(selector); }
double noteDouble(id, SEL selector, id) {
  noteSelector(selector);
  return 3.25;
}
id noteNoArgument(id, SEL selector) {
  noteSelector(selector);
  return nil;
}
template <class Number> void noteNumber(id, SEL selector, Number value) {
  note("host " + std::string(sel_getName(selector)) + " " + std::to_string(static_cast<long long>(value)));
}

class OtherSignatures : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    sdk->ready = YES;
  }
  void TearDown() override {
    [replacement_ release];
    DelegateTest::TearDown();
  }

  /// Makes the application's delegate one of a class with this method and no other.
  template <class R, class... A>
  void hostWith(const char *selector, R (*implementation)(id, SEL, A...), const char *types) {
    hostWithImplementation(selector, reinterpret_cast<IMP>(implementation), types);
  }

  /// What of the host's was called by a change of the configuration, by readiness, and what the SDK heard.
  Lines heard() {
    take();
    [delegate zorbel:sdk configChangedTo:@{@"server" : @"b"}];
    [delegate zorbelIsReady:sdk];
    return take();
  }

private:
  void hostWithImplementation(const char *selector, IMP implementation, const char *types) {
    static int count = 0;
    const std::string name = "QVTestOddHost" + std::to_string(++count);
    Class const cls = objc_allocateClassPair([NSObject class], name.c_str(), 0);
    ASSERT_TRUE(cls != Nil);
    ASSERT_TRUE(class_addMethod(cls, sel_registerName(selector), implementation, types));
    objc_registerClassPair(cls);
    [replacement_ release];
    replacement_ = [[cls alloc] init];
    [[UIApplication sharedApplication] setDelegate:replacement_];
  }

  id replacement_ = nil;
};

} // namespace

TEST_F(OtherSignatures, OfAConfigurationMethodWithoutAResultHaveNothingAgainstIt) {
  hostWith("zorbelConfigIs:", &noteVoid, "v24@0:8@16");
  EXPECT_EQ(heard(), (Lines{"host zorbelConfigIs:", "sdk configApplied: 1 message: nil",
                            "host zorbelConfigIs:", "sdk configApplied: 1 message: nil"}));
  hostWith("zorbelConfigChangedTo:", &noteVoid, "v24@0:8@16");
  EXPECT_EQ(heard(), (Lines{"host zorbelConfigChangedTo:", "sdk configApplied: 1 message: nil"}));
}

TEST_F(OtherSignatures, OfAConfigurationMethodCountAsNoMethod) {
  hostWith("zorbelConfigIs:", &noteDouble, "d24@0:8@16");
  EXPECT_EQ(heard(), (Lines{"sdk configApplied: 0 message: nil"}));
  hostWith("zorbelConfigIs:", &noteNumber<int>, "v20@0:8i16");
  EXPECT_EQ(heard(), (Lines{"sdk configApplied: 0 message: nil"}));
  hostWith("zorbelConfigChangedTo:", &noteNoArgument, "@16@0:8");
  EXPECT_EQ(heard(), (Lines{"sdk configApplied: 0 message: nil"}));
}

TEST_F(OtherSignatures, OfTheStateMethodMayTakeAnyInteger) {
  hostWith("zorbelStateChangedTo:", &noteNumber<int>, "v20@0:8i16");
  [delegate notifyAppDelegateWithZorbelState:1];
  hostWith("zorbelStateChangedTo:", &noteNumber<unsigned long>, "v24@0:8Q16");
  [delegate notifyAppDelegateWithZorbelState:1];
  hostWith("zorbelStateChangedTo:", &noteNumber<BOOL>, "v20@0:8C16");
  [delegate notifyAppDelegateWithZorbelState:0];
  hostWith("zorbelStateChangedTo:", &noteNumber<bool>, "v20@0:8B16");
  [delegate notifyAppDelegateWithZorbelState:1];
  hostWith("zorbelStateChangedTo:", &noteNumber<short>, "v20@0:8s16");
  [delegate notifyAppDelegateWithZorbelState:0];
  EXPECT_EQ(take(),
            (Lines{"host zorbelStateChangedTo: 1", "host zorbelStateChangedTo: 1", "host zorbelStateChangedTo: 0",
                   "host zorbelStateChangedTo: 1", "host zorbelStateChangedTo: 0"}));
}

TEST_F(OtherSignatures, OfTheStateMethodCountAsNoMethodOtherwise) {
  hostWith("zorbelStateChangedTo:", &noteVoid, "v24@0:8@16");
  [delegate notifyAppDelegateWithZorbelState:1];
  hostWith("zorbelStateChangedTo:", &noteNumber<double>, "v24@0:8d16");
  [delegate notifyAppDelegateWithZorbelState:1];
  hostWith("zorbelStateChangedTo:", &noteNoArgument, "@16@0:8");
  [delegate notifyAppDelegateWithZorbelState:1];
  EXPECT_EQ(take(), Lines());
}

TEST_F(OtherSignatures, OfALaunchMethodCountAsNoMethodToTheReplay) {
  hostWith("application:didFinishLaunchingWithOptions:", &noteVoid, "v24@0:8@16");
  EXPECT_EQ([delegate _application:[UIApplication sharedApplication] didFinishLaunchingWithOptions:nil], YES);
  hostWith("application:handleOpenURL:", &noteVoid, "v24@0:8@16");
  EXPECT_EQ([delegate _application:[UIApplication sharedApplication] openURL:[NSURL URLWithString:@"notes:1"]
                           options:nil],
            YES);
  EXPECT_EQ(take(), Lines());
}

TEST_F(OtherSignatures, OfTheWindowCountAsNoWindow) {
  hostWith("window", reinterpret_cast<void (*)(id, SEL)>(&noteNoArgument), "v16@0:8");
  [delegate didChangeKeyboardMode:nil];
  EXPECT_EQ(take(), Lines());
}

/// Stands for another object without having a method of its own.
@interface QVTestForwarder : NSProxy {
@public
  id target;
}
@end

@implementation QVTestForwarder
- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector {
  return [target methodSignatureForSelector:selector];
}
- (void)forwardInvocation:(NSInvocation *)invocation {
  [invocation invokeWithTarget:target];
}
- (BOOL)respondsToSelector:(SEL)selector {
  return [target respondsToSelector:selector];
}
@end

TEST_F(OtherSignatures, BehindAProxyAreTakenAtItsWord) {
  QVTestForwarder *const proxy = [[QVTestForwarder alloc] autorelease];
  proxy->target = host;
  [host has:@"zorbelConfigIs:", @"zorbelStateChangedTo:", nil];
  host->answerToConfigIs = @"no";
  [[UIApplication sharedApplication] setDelegate:(id)proxy];
  [delegate zorbelIsReady:sdk];
  EXPECT_EQ(take(),
            (Lines{"host zorbelConfigIs: nil", "sdk configApplied: 2 message: no", "host zorbelStateChangedTo: 0"}));
}
