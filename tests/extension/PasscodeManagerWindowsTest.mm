// The host's windows while the extension is shown, and as they are afterwards.
#include "PasscodeManager.h"

#include <objc/runtime.h>

namespace {

class PasscodeWindows : public PasscodeManager {
protected:
  UIWindow *front() { return [[[UIApplication sharedApplication] windows] lastObject]; }

  /// The class of that name, of the platform's or else one made for the test.
  static Class windowClass(const char *name, Class superclass = [UIWindow class]) {
    if (Class const there = objc_getClass(name)) return there;
    Class const cls = objc_allocateClassPair(superclass, name, 0);
    objc_registerClassPair(cls);
    return cls;
  }

  /// A hidden window of a class.
  static UIWindow *make(Class cls, CGFloat level) {
    UIWindow *const made = [[[cls alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
    [made setWindowLevel:level];
    return made;
  }
};

} // namespace

TEST_F(PasscodeWindows, AreRecordedByAnInfoThatDoesNotKeepThem) {
  Class const cls = NSClassFromString(@"AppWindowInfo");
  EXPECT_EQ([cls superclass], [NSObject class]);
  const std::pair<const char *, const char *> methods[] = {
      {"appWindow", "@16@0:8"},
      {"setAppWindow:", "v24@0:8@16"},
      {"appWindowLevel", "d16@0:8"},
      {"setAppWindowLevel:", "v24@0:8d16"},
  };
  for (const auto &[selector, types] : methods) {
    const Method method = class_getInstanceMethod(cls, sel_registerName(selector));
    ASSERT_TRUE(method != nullptr) << selector;
    EXPECT_STREQ(method_getTypeEncoding(method), types) << selector;
  }
  id<QVWindowInfo> const info = [[[cls alloc] init] autorelease];
  EXPECT_EQ([info appWindow], nil);
  EXPECT_EQ([info appWindowLevel], 0);
  UIWindow *const mortal = [[UIWindow alloc] init];
  [info setAppWindow:mortal];
  [info setAppWindowLevel:2000.5];
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  EXPECT_EQ([info appWindow], mortal);
  [pool drain];
  [mortal release];
  EXPECT_EQ([info appWindow], nil);
  EXPECT_EQ([info appWindowLevel], 2000.5);
}

TEST_F(PasscodeWindows, ShownAboveTheExtensionAreLoweredAndGetTheirLevelBack) {
  startAndShow();
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  EXPECT_EQ([alert windowLevel], UIWindowLevelNormal);
  ASSERT_EQ([[passcode appVisibleWindows] count], 1u);
  id<QVWindowInfo> const info = [[passcode appVisibleWindows] lastObject];
  EXPECT_EQ([info appWindow], alert);
  EXPECT_EQ([info appWindowLevel], UIWindowLevelAlert + 1);
  EXPECT_TRUE([[passcode extensionWindow] isKeyWindow]);
  EXPECT_EQ(front(), [passcode extensionWindow]);
  [passcode stop];
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
  // The next start forgets them.
  EXPECT_EQ([[passcode appVisibleWindows] count], 1u);
  startAndShow();
  EXPECT_EQ([[passcode appVisibleWindows] count], 0u);
}

TEST_F(PasscodeWindows, ShownAtExactlyItsLevelAreNotLoweredButTheExtensionIsShownAboveThem) {
  startAndShow();
  UIWindow *const alert = show(UIWindowLevelAlert);
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert);
  EXPECT_EQ([[passcode appVisibleWindows] count], 0u);
  EXPECT_EQ(front(), [passcode extensionWindow]);
  EXPECT_TRUE([[passcode extensionWindow] isKeyWindow]);
}

TEST_F(PasscodeWindows, ShownBelowTheExtensionAreLeftAlone) {
  startAndShow();
  UIWindow *const below = make([UIWindow class], UIWindowLevelAlert - 0.5);
  [below setHidden:NO];
  EXPECT_EQ([below windowLevel], UIWindowLevelAlert - 0.5);
  EXPECT_EQ([[passcode appVisibleWindows] count], 0u);
  EXPECT_TRUE([[passcode extensionWindow] isKeyWindow]);
}

TEST_F(PasscodeWindows, OnTheScreenBeforeTheStartAreLeftAlone) {
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  startAndShow();
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
  [passcode stop];
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
  EXPECT_TRUE([alert isKeyWindow]);
}

TEST_F(PasscodeWindows, OfTheKeyboardAreNeverLowered) {
  startAndShow();
  Class const effects = windowClass("UITextEffectsWindow");
  for (Class cls : {effects, windowClass("QVTestKeyboardWindow", effects)}) {
    UIWindow *const keyboard = make(cls, UIWindowLevelAlert + 10);
    [keyboard setHidden:NO];
    EXPECT_EQ([keyboard windowLevel], UIWindowLevelAlert + 10);
    EXPECT_EQ([[passcode appVisibleWindows] count], 0u);
  }
}

TEST_F(PasscodeWindows, ThatPresentAlertsMayBecomeKey) {
  startAndShow();
  UIWindow *const presenter = make(windowClass("_UIAlertControllerShimPresenterWindow"), UIWindowLevelNormal);
  [presenter makeKeyAndVisible];
  EXPECT_TRUE([presenter isKeyWindow]);
  EXPECT_EQ([passcode appKeyWindow], window);
  [passcode stop];
  EXPECT_TRUE([window isKeyWindow]);
}

TEST_F(PasscodeWindows, ThatPresentAlertsAreLoweredLikeOthers) {
  startAndShow();
  UIWindow *const presenter = make(windowClass("_UIAlertControllerShimPresenterWindow"), UIWindowLevelAlert + 1);
  [presenter setHidden:NO];
  EXPECT_EQ([presenter windowLevel], UIWindowLevelNormal);
  [passcode stop];
  EXPECT_EQ([presenter windowLevel], UIWindowLevelAlert + 1);
}

TEST_F(PasscodeWindows, MadeKeyByTheAppLoseItToTheExtensionAndGetItAtTheEnd) {
  startAndShow();
  UIWindow *const other = show(UIWindowLevelNormal);
  EXPECT_TRUE([[passcode extensionWindow] isKeyWindow]);
  EXPECT_EQ([passcode appKeyWindow], other);
  [passcode stop];
  EXPECT_TRUE([other isKeyWindow]);
  EXPECT_FALSE([window isKeyWindow]);
}

TEST_F(PasscodeWindows, MadeKeyBehindTheExtensionsBackGetTheKeyStateAtTheEndAndTheLastOneWins) {
  startAndShow();
  UIWindow *const first = make([UIWindow class], UIWindowLevelNormal);
  UIWindow *const second = make([UIWindow class], UIWindowLevelNormal);
  [first makeKeyWindow];
  EXPECT_TRUE([[passcode extensionWindow] isKeyWindow]);
  [second makeKeyWindow];
  EXPECT_TRUE([[passcode extensionWindow] isKeyWindow]);
  [second setHidden:NO];
  [passcode stop];
  EXPECT_TRUE([second isKeyWindow]);
}

TEST_F(PasscodeWindows, AreNotWatchedAfterTheEnd) {
  startAndShow();
  [passcode stop];
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
  EXPECT_TRUE([alert isKeyWindow]);
  EXPECT_EQ([passcode appKeyWindow], window);
}

TEST_F(PasscodeWindows, ThatTheManagerIsToldOfWhileItIsNotActiveAreLeftAlone) {
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  NSNotification *const notification = [NSNotification notificationWithName:@"QVTest" object:alert];
  [passcode windowDidBecomeVisible:notification];
  [passcode windowDidBecomeKey:notification];
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
  EXPECT_EQ([passcode appKeyWindow], nil);
}

TEST_F(PasscodeWindows, ThatAreTheExtensionsOwnAreNeitherLoweredNorRemembered) {
  startAndShow();
  UIWindow *const ours = [passcode extensionWindow];
  NSNotification *const notification = [NSNotification notificationWithName:@"QVTest" object:ours];
  [ours setWindowLevel:UIWindowLevelAlert + 7];
  [passcode windowDidBecomeVisible:notification];
  [passcode windowDidBecomeKey:notification];
  EXPECT_EQ([ours windowLevel], UIWindowLevelAlert + 7);
  EXPECT_EQ([[passcode appVisibleWindows] count], 0u);
  EXPECT_EQ([passcode appKeyWindow], window);
}

TEST_F(PasscodeWindows, ClosedWhileTheyWereLoweredAreSkipped) {
  startAndShow();
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  UIWindow *const gone = [[UIWindow alloc] initWithFrame:CGRectMake(0, 0, 10, 10)];
  [gone setWindowLevel:UIWindowLevelAlert + 3];
  [gone setHidden:NO];
  UIWindow *const stays = show(UIWindowLevelAlert + 1);
  ASSERT_EQ([[passcode appVisibleWindows] count], 2u);
  [gone setHidden:YES];
  [gone release];
  UIWindow *const kept = [stays retain];
  [pool drain];
  EXPECT_EQ([(id<QVWindowInfo>)[[passcode appVisibleWindows] objectAtIndex:0] appWindow], nil);
  [passcode stop];
  EXPECT_EQ([kept windowLevel], UIWindowLevelAlert + 1);
  [kept release];
}

TEST_F(PasscodeWindows, ThatAreNoLongerTheAppsKeepTheLevelThatTheyHave) {
  startAndShow();
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  static IMP original;
  static id missing;
  missing = alert;
  // Another that claims to be equal does not stand for it.
  replaceMethod([UIWindow class], "isEqual:", reinterpret_cast<IMP>(+[](id, SEL, id) -> BOOL { return YES; }));
  original = class_getMethodImplementation([UIApplication class], @selector(windows));
  replaceMethod([UIApplication class], "windows", reinterpret_cast<IMP>(+[](id self, SEL selector) -> id {
                  NSMutableArray *const rest =
                      [[reinterpret_cast<id (*)(id, SEL)>(original)(self, selector) mutableCopy] autorelease];
                  [rest removeObjectIdenticalTo:missing];
                  return rest;
                }));
  [passcode stop];
  EXPECT_EQ([alert windowLevel], UIWindowLevelNormal);
}

TEST_F(PasscodeWindows, LoweredTwiceGetBackTheLevelsInOrderSoThatTheLastCounts) {
  startAndShow();
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  [alert setHidden:YES];
  [alert setWindowLevel:UIWindowLevelAlert + 2];
  [alert setHidden:NO];
  EXPECT_EQ([[passcode appVisibleWindows] count], 2u);
  EXPECT_EQ([alert windowLevel], UIWindowLevelNormal);
  [passcode stop];
  EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 2);
}

TEST_F(PasscodeWindows, AreAsTheyWereAfterManyRounds) {
  UIWindow *const alert = [show(UIWindowLevelAlert + 1) retain];
  [window makeKeyWindow];
  const NSUInteger before = [[[UIApplication sharedApplication] windows] count];
  for (int round = 0; round < 200; ++round) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    startAndShow();
    [alert setHidden:YES];
    [alert setHidden:NO];
    EXPECT_EQ([alert windowLevel], UIWindowLevelNormal);
    [passcode stop];
    EXPECT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
    EXPECT_TRUE([window isKeyWindow]);
    [pool drain];
  }
  EXPECT_EQ([[[UIApplication sharedApplication] windows] count], before + 1); // ours, hidden
  [alert release];
}
