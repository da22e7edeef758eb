// Setting the application's delegate, before the app has launched and after.
#include "Lifecycle.h"

#include <objc/runtime.h>

namespace {

class SetDelegate : public Lifecycle {
protected:
  /// One of the SDK's proxies.
  static id proxyOf(id target) {
    return [[[NSClassFromString(@"ZBAppDelegateProxy") alloc] initWithTarget:target] autorelease];
  }
  /// The platform's own idea of the delegate, past every hook.
  id kept() {
    id delegate = nil;
    object_getInstanceVariable(application, "_delegate", reinterpret_cast<void **>(&delegate));
    return delegate;
  }
};

std::string setting(id delegate) {
  return "3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate " + shown(delegate);
}

std::string settingPrivately(id delegate) {
  return "3 -[UIApplication(Sandbox) sb__setDelegate:assumeOwnership:]: Setting delegate " + shown(delegate);
}

Lines after(const std::string &first, Lines lines) {
  lines.insert(lines.begin(), first);
  return lines;
}

bool dead;
void noteDeath(id self, SEL selector) {
  dead = true;
  const IMP above = class_getMethodImplementation([NSObject class], selector);
  reinterpret_cast<void (*)(id, SEL)>(above)(self, selector);
}

} // namespace

TEST_F(SetDelegate, BeforeLaunchGraftsItsClassAndSetsIt) {
  QVFullHost *const host = make<QVFullHost>();
  [application setDelegate:host];
  EXPECT_EQ(support::log(), after(setting(host), graftLog("QVFullHost", true)));
  EXPECT_EQ(kept(), host);
}

TEST_F(SetDelegate, ToAnotherObjectOfTheClassBeforeLaunchSetsItAndChangesTheClassNoMore) {
  setDelegate(make<QVFullHost>());
  const std::string grafted = picture([QVFullHost class]);
  QVFullHost *const another = make<QVFullHost>();
  [application setDelegate:another];
  EXPECT_EQ(support::log(),
            (Lines{setting(another), "5 UIApplicationDelegateSwizzle called for class QVFullHost",
                   "5 We have already swizzled this class instance methods. No need to redo work and mess up the "
                   "class."}));
  EXPECT_EQ(picture([QVFullHost class]), grafted);
  EXPECT_EQ(kept(), another);
}

TEST_F(SetDelegate, ToNilBeforeLaunchSetsIt) {
  setDelegate(make<QVFullHost>());
  [application setDelegate:nil];
  EXPECT_EQ(support::log(), after(setting(nil), graftLog("(null)", false)));
  EXPECT_EQ(kept(), nil);
}

TEST_F(SetDelegate, ToAProxyBeforeLaunchSetsItUngrafted) {
  QVHostProxy *const proxy = [[[QVHostProxy alloc] initWithTarget:make<QVFullHost>()] autorelease];
  [application setDelegate:proxy];
  EXPECT_EQ(support::log(), (Lines{setting(proxy), "5 Cannot swizzle methods for QVHostProxy."}));
  EXPECT_EQ(kept(), proxy);
}

TEST_F(SetDelegate, AfterLaunchReplacesOnlyTheOneThatIsForwardedTo) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  QVEmptyHost *const another = make<QVEmptyHost>();
  [application setDelegate:another];
  EXPECT_EQ(support::log(), (Lines{setting(another)}));
  EXPECT_EQ(kept(), host);
  EXPECT_EQ([ZorbelDelegate() originalDelegate], another);
  EXPECT_FALSE(isGrafted([QVEmptyHost class]));
}

TEST_F(SetDelegate, ToNilAfterLaunchLeavesTheApplicationItsDelegate) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  [application setDelegate:nil];
  EXPECT_EQ(kept(), host);
  EXPECT_EQ([ZorbelDelegate() originalDelegate], nil);
}

TEST_F(SetDelegate, ToTheSDKsProxyAfterLaunchSetsItUngrafted) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  id const proxy = proxyOf(host);
  [application setDelegate:proxy];
  EXPECT_EQ(support::log(), (Lines{setting(proxy)}));
  EXPECT_EQ(kept(), proxy);
  EXPECT_EQ([ZorbelDelegate() originalDelegate], host);
}

TEST_F(SetDelegate, AfterLaunchTakesAnotherProxyForAnyOtherDelegateThoughItClaimsToBeTheSDKs) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  QVHostProxy *const proxy = [[[QVHostProxy alloc] initWithTarget:proxyOf(host)] autorelease];
  ASSERT_TRUE([proxy isKindOfClass:NSClassFromString(@"ZBAppDelegateProxy")]);
  [application setDelegate:proxy];
  EXPECT_EQ(kept(), host);
  EXPECT_EQ([ZorbelDelegate() originalDelegate], proxy);
}

TEST_F(SetDelegate, WithASubclassOfTheSDKsProxyAfterLaunchSetsIt) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  Class const cls = objc_allocateClassPair(NSClassFromString(@"ZBAppDelegateProxy"), "QVProxyBelow", 0);
  objc_registerClassPair(cls);
  id const proxy = [[[cls alloc] initWithTarget:host] autorelease];
  [application setDelegate:proxy];
  EXPECT_EQ(kept(), proxy);
}

TEST_F(SetDelegate, PrivatelyGraftsBeforeLaunchAndHandsTheFlagOn) {
  class_addMethod([QVEmptyHost class], @selector(dealloc), reinterpret_cast<IMP>(&noteDeath), "v16@0:8");
  QVEmptyHost *const host = [[QVEmptyHost alloc] init];
  [application _setDelegate:host assumeOwnership:YES];
  EXPECT_EQ(support::log(), after(settingPrivately(host), graftLog("QVEmptyHost", false)));
  EXPECT_EQ(kept(), host);
  [host release];
  EXPECT_FALSE(dead) << "the application owns it";
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  QVEmptyHost *const another = [[QVEmptyHost alloc] init];
  [application _setDelegate:another assumeOwnership:NO];
  [pool drain];
  EXPECT_TRUE(dead) << "the application has let it go";
  dead = false;
  [another release];
  EXPECT_TRUE(dead) << "the application does not own the other";
  [application _setDelegate:nil assumeOwnership:NO];
  EXPECT_EQ(kept(), nil);
}

TEST_F(SetDelegate, PrivatelyAfterLaunchGraftsAndSetsItAllTheSame) {
  QVFullHost *const host = make<QVFullHost>();
  launch(host);
  QVEmptyHost *const another = make<QVEmptyHost>();
  [application _setDelegate:another assumeOwnership:NO];
  EXPECT_EQ(support::log(), after(settingPrivately(another), graftLog("QVEmptyHost", false)));
  EXPECT_EQ(kept(), another);
  EXPECT_EQ([ZorbelDelegate() originalDelegate], host);
}
