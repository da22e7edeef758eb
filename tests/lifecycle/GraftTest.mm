// What becomes of the delegate's class when a delegate is set.
#include "Lifecycle.h"

#include <objc/runtime.h>
#include <set>
#include <sstream>

namespace {

using Graft = Lifecycle;

const char *const kAlready =
    "5 We have already swizzled this class instance methods. No need to redo work and mess up the class.";

/// What a graft logs after the line of whoever set the delegate.
Lines afterFirst(Lines lines) {
  if (!lines.empty()) lines.erase(lines.begin());
  return lines;
}

/// Says of itself that it is of a class of proxies.
Class claimedClass;
Class claimClass(id, SEL) { return claimedClass; }

/// A class under that of `object`, which says of itself what the other library that made it wants.
Class putUnder(id object, const char *name) {
  Class const cls = objc_allocateClassPair(object_getClass(object), name, 0);
  objc_registerClassPair(cls);
  object_setClass(object, cls);
  return cls;
}

Class ownersClass(id self, SEL) { return class_getSuperclass(object_getClass(self)); }
void alsoBecomesActive(id self, SEL selector, UIApplication *application) {
  hear("the other library");
  const IMP above = class_getMethodImplementation(class_getSuperclass(object_getClass(self)), selector);
  reinterpret_cast<void (*)(id, SEL, id)>(above)(self, selector, application);
}

} // namespace

TEST_F(Graft, OntoAClassWithEveryMethodExchangesThemInTheTablesOrder) {
  UIApplicationDelegateSwizzle(make<QVFullHost>());
  EXPECT_EQ(support::log(), graftLog("QVFullHost", true));
  EXPECT_TRUE(isGrafted([QVFullHost class]));
}

TEST_F(Graft, OntoAClassWithNoneOfTheMethodsAddsThemUnderTheHostsNamesOnly) {
  UIApplicationDelegateSwizzle(make<QVEmptyHost>());
  EXPECT_EQ(support::log(), graftLog("QVEmptyHost", false));
  EXPECT_TRUE([QVEmptyHost instancesRespondToSelector:@selector(applicationDidBecomeActive:)]);
  EXPECT_FALSE([QVEmptyHost instancesRespondToSelector:sel_registerName("zb_applicationDidBecomeActive:")]);
  EXPECT_TRUE([QVEmptyHost instancesRespondToSelector:@selector(window)]);
  EXPECT_FALSE([QVEmptyHost instancesRespondToSelector:sel_registerName("zb_window")]);
}

TEST_F(Graft, LeavesTheMethodForExtensionPointsAsTheHostWroteIt) {
  QVFullHost *const host = make<QVFullHost>();
  host->answer = YES;
  const SEL selector = @selector(application:shouldAllowExtensionPointIdentifier:);
  const IMP before = [host methodForSelector:selector];
  UIApplicationDelegateSwizzle(host);
  EXPECT_EQ([host methodForSelector:selector], before);
  EXPECT_EQ(support::log(0),
            (Lines{"0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:"}));
  UIApplicationDelegateSwizzle(make<QVEmptyHost>());
  EXPECT_FALSE([QVEmptyHost instancesRespondToSelector:selector]);
}

TEST_F(Graft, IsMadeOnceForAClass) {
  UIApplicationDelegateSwizzle(make<QVFullHost>());
  const std::string grafted = picture([QVFullHost class]);
  support::clearLog();
  UIApplicationDelegateSwizzle(make<QVFullHost>());
  EXPECT_EQ(support::log(), (Lines{"5 UIApplicationDelegateSwizzle called for class QVFullHost", kAlready}));
  EXPECT_EQ(picture([QVFullHost class]), grafted);
}

TEST_F(Graft, IsNotMadeAgainForASubclassOfAGraftedClass) {
  UIApplicationDelegateSwizzle(make<QVFullHost>());
  const std::string below = picture([QVHostBelow class]);
  support::clearLog();
  QVHostBelow *const host = make<QVHostBelow>();
  UIApplicationDelegateSwizzle(host);
  EXPECT_EQ(support::log(), (Lines{"5 UIApplicationDelegateSwizzle called for class QVHostBelow", kAlready}));
  EXPECT_EQ(picture([QVHostBelow class]), below);
  [host applicationDidBecomeActive:application];
  EXPECT_EQ(heard(), (Lines{"below", "applicationDidBecomeActive: UIApplication"}));
}

TEST_F(Graft, OfAClassThatInheritsItsMethodsLeavesTheSuperclassAlone) {
  const std::string above = picture([QVFullHost class]);
  UIApplicationDelegateSwizzle(make<QVHostBelow>());
  EXPECT_EQ(support::log(), graftLog("QVHostBelow", true));
  EXPECT_EQ(picture([QVFullHost class]), above);
  EXPECT_FALSE(isGrafted([QVFullHost class]));
}

TEST_F(Graft, CanBeMadeForAClassWithoutAnObjectOfIt) {
  UIApplicationDelegateSwizzleMandatoryMethods([QVFullHost class]);
  EXPECT_EQ(support::log(), afterFirst(graftLog("QVFullHost", true)));
  support::clearLog();
  UIApplicationDelegateSwizzleMandatoryMethods([QVFullHost class]);
  EXPECT_EQ(support::log(), (Lines{kAlready}));
}

TEST_F(Graft, OfNilChangesNoClass) {
  const std::string before = picture([NSObject class]);
  UIApplicationDelegateSwizzle(nil);
  EXPECT_EQ(support::log(), graftLog("(null)", false));
  EXPECT_EQ(picture([NSObject class]), before);
}

TEST_F(Graft, MarksTheClassWithAMethodThatSaysWhatItIsThereFor) {
  QVEmptyHost *const host = make<QVEmptyHost>();
  UIApplicationDelegateSwizzle(host);
  support::clearLog();
  [host performSelector:sel_registerName("zb_markerMethod")];
  EXPECT_EQ(support::log(),
            (Lines{"3 -[ZBWrappedApplicationDelegate zb_markerMethod]",
                   "5 (null) Marker method. If this method is present, we have already swizzled this class."}));
  const Method marker = class_getInstanceMethod([QVEmptyHost class], sel_registerName("zb_markerMethod"));
  EXPECT_STREQ(method_getTypeEncoding(marker), "v16@0:8");
}

TEST_F(Graft, TakesItsMethodsFromAClassThatHoldsTheseAndNothingElse) {
  Class const cls = NSClassFromString(@"ZBWrappedApplicationDelegate");
  EXPECT_EQ(class_getSuperclass(cls), [NSObject class]);
  EXPECT_EQ(class_getInstanceSize(cls), class_getInstanceSize([NSObject class])) << "it has no instance variables";
  EXPECT_TRUE([cls conformsToProtocol:NSProtocolFromString(@"UIApplicationDelegate")]);
  std::set<std::string> names;
  std::istringstream methods(picture(cls));
  for (std::string line; std::getline(methods, line);)
    names.insert(line.substr(0, line.find(' ')));
  EXPECT_EQ(names, (std::set<std::string>{
                       "zb_application:willFinishLaunchingWithOptions:",
                       "zb_application:didFinishLaunchingWithOptions:",
                       "zb_application:openURL:options:",
                       "zb_applicationDidBecomeActive:",
                       "zb_applicationWillResignActive:",
                       "zb_applicationWillTerminate:",
                       "zb_applicationDidEnterBackground:",
                       "zb_applicationWillEnterForeground:",
                       "zb_window",
                       "zb_setWindow:",
                       "zb_markerMethod",
                   }));
}

TEST_F(Graft, OfAProxyIsRefusedThoughItPassesForTheDelegateBehindIt) {
  QVFullHost *const host = make<QVFullHost>();
  QVHostProxy *const proxy = [[[QVHostProxy alloc] initWithTarget:host] autorelease];
  const std::string pictures = picture([QVFullHost class]) + picture([QVHostProxy class]);
  UIApplicationDelegateSwizzle(proxy);
  EXPECT_EQ(support::log(), (Lines{"5 Cannot swizzle methods for QVHostProxy."}));
  EXPECT_EQ(picture([QVFullHost class]) + picture([QVHostProxy class]), pictures);
}

TEST_F(Graft, OfTheSDKsOwnProxyIsRefused) {
  Class const proxyClass = NSClassFromString(@"ZBAppDelegateProxy");
  ASSERT_NE(proxyClass, Nil);
  id const proxy = [[[proxyClass alloc] initWithTarget:make<QVFullHost>()] autorelease];
  UIApplicationDelegateSwizzle(proxy);
  EXPECT_EQ(support::log(), (Lines{"5 Cannot swizzle methods for ZBAppDelegateProxy."}));
  EXPECT_FALSE(isGrafted([QVFullHost class]));
  EXPECT_FALSE(isGrafted(proxyClass));
}

TEST_F(Graft, OfAnObjectThatCallsItselfAProxyIsRefused) {
  QVEmptyHost *const host = make<QVEmptyHost>();
  Class const cls = putUnder(host, "QVCallsItselfAProxy");
  class_addMethod(cls, @selector(class), reinterpret_cast<IMP>(&claimClass), "#16@0:8");
  claimedClass = [QVHostProxy class];
  UIApplicationDelegateSwizzle(host);
  EXPECT_EQ(support::log(), (Lines{"5 Cannot swizzle methods for QVHostProxy."}));
  EXPECT_FALSE(isGrafted(cls));
}

// Observing puts a class under the object that is gone when nobody observes any more.
TEST_F(Graft, OfAnObservedDelegateIsMadeForTheHostsOwnClassAndStays) {
  QVFullHost *const host = make<QVFullHost>();
  QVEmptyHost *const observer = make<QVEmptyHost>();
  [host addObserver:observer forKeyPath:@"window" options:0 context:NULL];
  ASSERT_NE(object_getClass(host), [QVFullHost class]);
  UIApplicationDelegateSwizzle(host);
  EXPECT_EQ(support::log(), graftLog("QVFullHost", true));
  support::clearLog();
  [host applicationDidBecomeActive:application];
  [host removeObserver:observer forKeyPath:@"window"];
  [host applicationWillResignActive:application];
  EXPECT_EQ(heard(),
            (Lines{"applicationDidBecomeActive: UIApplication", "applicationWillResignActive: UIApplication"}));
  EXPECT_EQ(support::log(3), (Lines{"3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]",
                                    "3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]"}));
}

TEST_F(Graft, AndAnotherLibrarysClassUnderTheDelegateBothSeeTheEventWhicheverCameFirst) {
  for (const bool otherFirst : {true, false}) {
    QVFullHost *const host = make<QVFullHost>();
    if (!otherFirst) UIApplicationDelegateSwizzle(host);
    Class const cls = putUnder(host, otherFirst ? "QVOtherBefore" : "QVOtherAfter");
    class_addMethod(cls, @selector(class), reinterpret_cast<IMP>(&ownersClass), "#16@0:8");
    class_addMethod(cls, @selector(applicationDidBecomeActive:), reinterpret_cast<IMP>(&alsoBecomesActive),
                    "v24@0:8@16");
    UIApplicationDelegateSwizzle(host);
    EXPECT_TRUE(isGrafted([QVFullHost class]));
    clearHeard();
    support::clearLog();
    [host applicationDidBecomeActive:application];
    EXPECT_EQ(heard(), (Lines{"the other library", "applicationDidBecomeActive: UIApplication"})) << otherFirst;
    EXPECT_EQ(support::log(3), (Lines{"3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]"}))
        << otherFirst;
  }
}

// A class under the delegate that owns up to what it is counts as the host's.
TEST_F(Graft, OfADelegateWhoseClassAnotherLibraryReplacedOpenlyIsMadeForThatClass) {
  QVFullHost *const host = make<QVFullHost>();
  Class const cls = putUnder(host, "QVOpenlyUnder");
  UIApplicationDelegateSwizzle(host);
  EXPECT_EQ(support::log(), graftLog("QVOpenlyUnder", true));
  EXPECT_TRUE(isGrafted(cls));
  EXPECT_FALSE(isGrafted([QVFullHost class]));
  [host applicationDidBecomeActive:application];
  EXPECT_EQ(heard(), (Lines{"applicationDidBecomeActive: UIApplication"}));
}
