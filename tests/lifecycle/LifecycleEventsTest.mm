// The five events that the platform tells the delegate: the host hears of each, and then the SDK's side.
#include "Lifecycle.h"

#include <objc/runtime.h>

namespace {

struct Event {
  const char *name;     // as a test's name
  const char *selector; // that the platform sends
  const char *line;     // that the SDK's side logs
};

constexpr Event events[] = {
    {"DidBecomeActive", "applicationDidBecomeActive:", "3 -[QVZorbelDelegate applicationDidBecomeActive]"},
    {"WillResignActive", "applicationWillResignActive:", "3 -[QVZorbelDelegate applicationWillResignActive]"},
    {"WillTerminate", "applicationWillTerminate:", "3 -[QVZorbelDelegate applicationWillTerminate]"},
    {"DidEnterBackground", "applicationDidEnterBackground:", "3 (-[QVZorbelDelegate applicationDidEnterBackground]) "},
    {"WillEnterForeground",
     "applicationWillEnterForeground:", "3 (-[QVZorbelDelegate applicationWillEnterForeground]) "},
};

class LifecycleEvent : public Lifecycle, public testing::WithParamInterface<Event> {
protected:
  /// As the platform does it.
  void send(id delegate) {
    ASSERT_TRUE([delegate respondsToSelector:selector()]);
    [delegate performSelector:selector() withObject:application];
  }
  static SEL selector() { return sel_registerName(GetParam().selector); }
  static std::string ours() { return std::string("3 -[ZBWrappedApplicationDelegate zb_") + GetParam().selector + "]"; }
};

/// Becomes part of what is heard when the SDK's side is told.
IMP told;
void hearAndTell(id self, SEL selector) {
  hear("the SDK's side");
  reinterpret_cast<void (*)(id, SEL)>(told)(self, selector);
}
/// Has the SDK's side heard, too.
void listenToTheSDKsSide(const char *selector) {
  const std::string name(selector, strlen(selector) - 1); // without the colon
  const Method method = class_getInstanceMethod(object_getClass(ZorbelDelegate()), sel_registerName(name.c_str()));
  ASSERT_NE(method, nullptr);
  told = method_setImplementation(method, reinterpret_cast<IMP>(&hearAndTell));
}

} // namespace

TEST_P(LifecycleEvent, ReachesTheHostAndThenTheSDKsSide) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  listenToTheSDKsSide(GetParam().selector);
  send(host);
  EXPECT_EQ(heard(), (Lines{std::string(GetParam().selector) + " UIApplication", "the SDK's side"}));
  EXPECT_EQ(support::log(3), (Lines{ours(), GetParam().line}));
}

TEST_P(LifecycleEvent, HandsTheHostWhateverThePlatformHandsOver) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  [host performSelector:selector() withObject:make<QVEmptyHost>()];
  EXPECT_EQ(heard(), Lines{std::string(GetParam().selector) + " QVEmptyHost"});
}

TEST_P(LifecycleEvent, ThatTheHostHasNoMethodForReachesTheSDKsSideAlone) {
  QVEmptyHost *const host = make<QVEmptyHost>();
  launch(host);
  listenToTheSDKsSide(GetParam().selector);
  send(host);
  EXPECT_EQ(heard(), (Lines{"the SDK's side"}));
  EXPECT_EQ(support::log(3), (Lines{ours(), GetParam().line}));
}

TEST_P(LifecycleEvent, ReachesTheSDKsSideThoughTheHostRaisesAndTheExceptionGoesOn) {
  launch(make<QVEmptyHost>());
  QVRaisingHost *const host = make<QVRaisingHost>();
  UIApplicationDelegateSwizzle(host);
  support::clearLog();
  listenToTheSDKsSide(GetParam().selector);
  EXPECT_EQ(raisedBy([&] { send(host); }), [QVRaisingHost trouble]);
  EXPECT_EQ(heard(), (Lines{std::string(GetParam().selector) + " nil", "the SDK's side"}));
  EXPECT_EQ(support::log(3), (Lines{ours(), GetParam().line}));
}

TEST_P(LifecycleEvent, BeforeTheAppHasLaunchedReachesTheHostAlone) {
  QVFullHost *const host = make<QVFullHost>();
  setDelegate(host);
  send(host);
  EXPECT_EQ(heard(), (Lines{std::string(GetParam().selector) + " UIApplication"}));
  EXPECT_EQ(support::log(3), (Lines{ours()}));
  EXPECT_EQ(ZorbelDelegate(), nil);
}

INSTANTIATE_TEST_SUITE_P(Each, LifecycleEvent, testing::ValuesIn(events),
                         [](const auto &event) { return event.param.name; });
