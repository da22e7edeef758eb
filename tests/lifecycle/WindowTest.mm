// The delegate's window: the host's own property, or the one that stands in for it.
#include "Lifecycle.h"

namespace {
using DelegateWindow = Lifecycle;

const Lines kSetAndGet = {"3 -[ZBWrappedApplicationDelegate zb_setWindow:]",
                          "3 -[ZBWrappedApplicationDelegate zb_window]"};
} // namespace

TEST_F(DelegateWindow, OfAHostThatHasThePropertyIsTheHosts) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  UIWindow *const window = make<UIWindow>();
  [host setWindow:window];
  EXPECT_EQ([host window], window);
  EXPECT_EQ(host->_window, window);
  EXPECT_EQ([ZorbelDelegate() window], nil);
  EXPECT_EQ(support::log(), kSetAndGet);
}

TEST_F(DelegateWindow, OfAHostThatHasThePropertyAndNoWindowIsNone) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  [ZorbelDelegate() setWindow:make<UIWindow>()];
  EXPECT_EQ([host window], nil);
}

TEST_F(DelegateWindow, OfAHostWithoutThePropertyIsKeptByTheSDKsSide) {
  id<UIApplicationDelegate> const host = make<QVEmptyHost>();
  launch(host);
  UIWindow *const window = make<UIWindow>();
  [host setWindow:window];
  EXPECT_EQ([ZorbelDelegate() window], window);
  EXPECT_EQ([host window], window);
  EXPECT_EQ(support::log(3), kSetAndGet);
}

TEST_F(DelegateWindow, OfAHostWithoutThePropertyIsNilBeforeTheAppHasLaunched) {
  id<UIApplicationDelegate> const host = make<QVEmptyHost>();
  setDelegate(host);
  [host setWindow:make<UIWindow>()];
  EXPECT_EQ([host window], nil);
  EXPECT_EQ(support::log(), kSetAndGet);
}

TEST_F(DelegateWindow, OfAHostThatRaisesLetsTheExceptionGoOn) {
  QVRaisingHost *const host = make<QVRaisingHost>();
  setDelegate(host);
  EXPECT_EQ(raisedBy([&] { [host window]; }), [QVRaisingHost trouble]);
  EXPECT_EQ(raisedBy([&] { [host setWindow:nil]; }), [QVRaisingHost trouble]);
}
