// The manager: one of it, what it keeps, when it starts and what remains when it has stopped.
#include "PasscodeManager.h"

#include <algorithm>

#include <objc/runtime.h>

TEST_F(PasscodeManager, IsOne) {
  EXPECT_NE(passcode, nil);
  EXPECT_EQ([managerClass() sharedInstance], passcode);
  EXPECT_EQ([(id)passcode class], managerClass());
  EXPECT_EQ([managerClass() superclass], [NSObject class]);
}

TEST_F(PasscodeManager, IsNotMadeByInit) {
  EXPECT_EQ([[managerClass() alloc] init], nil);
  EXPECT_EQ([managerClass() sharedInstance], passcode);
}

TEST_F(PasscodeManager, ThatIsRefusedIsReleased) {
  static int deallocations;
  static IMP original;
  deallocations = 0;
  original = class_getMethodImplementation(managerClass(), @selector(dealloc));
  replaceMethod(managerClass(), "dealloc", reinterpret_cast<IMP>(+[](id self, SEL selector) {
                  ++deallocations;
                  reinterpret_cast<void (*)(id, SEL)>(original)(self, selector);
                }));
  [[managerClass() alloc] init];
  EXPECT_EQ(deallocations, 1);
}

TEST_F(PasscodeManager, HasMethodsOfTheirTypes) {
  const std::pair<const char *, const char *> methods[] = {
      {"init", "@16@0:8"},
      {"initPrivate", "@16@0:8"},
      {"start", "v16@0:8"},
      {"stop", "v16@0:8"},
      {"postPasscodeExtensionResult:", "v24@0:8@16"},
      {"isPasscodeExtensionActive", "C16@0:8"},
      {"canAppDisplayPasscodeExtension", "C16@0:8"},
      {"windowDidBecomeVisible:", "v24@0:8@16"},
      {"windowDidBecomeKey:", "v24@0:8@16"},
      {"getActivityPasteboardKey", "@16@0:8"},
      {"getAppIconData", "@16@0:8"},
      {"getPasscodeExtensionBundleId", "@16@0:8"},
      {"getPasscodeExtensionFK", "@16@0:8"},
      {"shouldAutorotate", "C16@0:8"},
      {"setShouldAutorotate:", "v20@0:8C16"},
      {"isExtensionActive", "C16@0:8"},
      {"setIsExtensionActive:", "v20@0:8C16"},
      {"appKeyWindow", "@16@0:8"},
      {"supportedInterfaceOrientations", "Q16@0:8"},
      {"setSupportedInterfaceOrientations:", "v24@0:8Q16"},
      {"autoRotateToInterfaceOrientations", "Q16@0:8"},
      {"setAutoRotateToInterfaceOrientations:", "v24@0:8Q16"},
      {"extensionWindow", "@16@0:8"},
      {"setExtensionWindow:", "v24@0:8@16"},
      {"windowViewController", "@16@0:8"},
      {"setWindowViewController:", "v24@0:8@16"},
      {"appVisibleWindows", "@16@0:8"},
      {"setAppVisibleWindows:", "v24@0:8@16"},
      {"appInfo", "@16@0:8"},
      {"setAppInfo:", "v24@0:8@16"},
  };
  for (const auto &[selector, types] : methods) {
    const Method method = class_getInstanceMethod(managerClass(), sel_registerName(selector));
    ASSERT_TRUE(method != nullptr) << selector;
    EXPECT_STREQ(method_getTypeEncoding(method), types) << selector;
  }
  EXPECT_TRUE(class_getClassMethod(managerClass(), @selector(sharedInstance)) != nullptr);
}

TEST_F(PasscodeManager, LetsNobodyElseSetTheKeyWindow) {
  EXPECT_FALSE([managerClass() instancesRespondToSelector:sel_registerName("setAppKeyWindow:")]);
}

TEST_F(PasscodeManager, ThatIsFreshKnowsNothing) {
  const id<QVPasscodeManager> fresh = [[(id<QVPasscodeManager>)[managerClass() alloc] initPrivate] autorelease];
  ASSERT_NE(fresh, nil);
  EXPECT_EQ([fresh shouldAutorotate], NO);
  EXPECT_EQ([fresh isExtensionActive], NO);
  EXPECT_EQ([fresh appKeyWindow], nil);
  EXPECT_EQ([fresh supportedInterfaceOrientations], 0u);
  EXPECT_EQ([fresh autoRotateToInterfaceOrientations], 0u);
  EXPECT_EQ([fresh extensionWindow], nil);
  EXPECT_EQ([fresh windowViewController], nil);
  EXPECT_EQ([fresh appVisibleWindows], nil);
  EXPECT_EQ([fresh appInfo], nil);
  EXPECT_EQ([fresh getPasscodeExtensionFK], nil);
}

TEST_F(PasscodeManager, MadeAnewWhileTheSharedOneIsShownResetsTheSharedOne) {
  startAndShow();
  [[(id<QVPasscodeManager>)[managerClass() alloc] initPrivate] release];
  EXPECT_EQ([passcode isPasscodeExtensionActive], NO);
  EXPECT_EQ([passcode extensionWindow], nil);
  EXPECT_EQ([passcode windowViewController], nil);
  // The rest of it stays.
  EXPECT_EQ([passcode appKeyWindow], window);
  EXPECT_EQ([passcode appInfo], sdk -> appInfo);
  EXPECT_EQ([managerClass() sharedInstance], passcode);
  startAndShow();
  EXPECT_EQ([passcode isPasscodeExtensionActive], YES);
}

TEST_F(PasscodeManager, GivesWhatTheSDKTellsUnchanged) {
  [passcode start];
  EXPECT_EQ([passcode appInfo], sdk -> appInfo);
  EXPECT_EQ([passcode getActivityPasteboardKey], [sdk->appInfo objectForKey:@"ActivityPasteboardKey"]);
  EXPECT_EQ([passcode getAppIconData], [sdk->appInfo objectForKey:@"AppIconData"]);
  EXPECT_EQ([passcode getPasscodeExtensionBundleId], [sdk->appInfo objectForKey:@"PasscodeExtensionBundleId"]);
  EXPECT_EQ([passcode getPasscodeExtensionFK], [sdk->appInfo objectForKey:@"PasscodeExtFKData"]);
}

TEST_F(PasscodeManager, GivesNothingForWhatTheSDKDoesNotTell) {
  [passcode setAppInfo:@{@"Other" : @1}];
  EXPECT_EQ([passcode getActivityPasteboardKey], nil);
  EXPECT_EQ([passcode getAppIconData], nil);
  EXPECT_EQ([passcode getPasscodeExtensionBundleId], nil);
  EXPECT_EQ([passcode getPasscodeExtensionFK], nil);
}

TEST_F(PasscodeManager, IsActiveAtOnceAndShowsTheWindowOnALaterTurnOfTheMainQueue) {
  [passcode start];
  EXPECT_EQ(take(), Lines{"sdk getAppInfo"});
  EXPECT_EQ([passcode isPasscodeExtensionActive], YES);
  EXPECT_EQ([passcode isExtensionActive], YES);
  EXPECT_EQ([passcode extensionWindow], nil);
  EXPECT_TRUE([window isKeyWindow]);
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"displayExtension"});
  UIWindow *const shown = [passcode extensionWindow];
  ASSERT_NE(shown, nil);
  EXPECT_FALSE([shown isHidden]);
  EXPECT_TRUE([shown isKeyWindow]);
  EXPECT_EQ([shown windowLevel], UIWindowLevelAlert);
  EXPECT_TRUE(CGRectEqualToRect([shown frame], [[UIScreen mainScreen] bounds]));
  EXPECT_EQ([[shown rootViewController] class], windowControllerClass());
  EXPECT_EQ([shown rootViewController], [passcode windowViewController]);
  EXPECT_EQ([passcode appKeyWindow], window);
  EXPECT_EQ([[passcode appVisibleWindows] count], 0u);
}

TEST_F(PasscodeManager, ThatIsStartedTwiceInARowRefusesTheSecondThoughNothingIsShownYet) {
  [passcode start];
  take();
  [passcode start];
  EXPECT_EQ(take(), Lines{kBusy});
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"displayExtension"});
  [passcode start];
  EXPECT_EQ(take(), Lines{kBusy});
  turnMainQueue();
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PasscodeManager, IsNotStartedByAnAppThatIsInactiveOrInTheBackground) {
  for (const UIApplicationState state : {UIApplicationStateInactive, UIApplicationStateBackground}) {
    setState(state);
    [passcode setSupportedInterfaceOrientations:24];
    [passcode start];
    EXPECT_EQ(take(), Lines{kNotActive});
    EXPECT_EQ([passcode isPasscodeExtensionActive], NO);
    EXPECT_EQ([passcode appInfo], nil);
    EXPECT_EQ([passcode supportedInterfaceOrientations], 24u);
  }
  turnMainQueue();
  EXPECT_EQ(take(), Lines{});
  EXPECT_EQ([passcode extensionWindow], nil);
}

TEST_F(PasscodeManager, ThatIsActiveSaysSoBeforeItLooksAtTheAppsState) {
  [passcode start];
  take();
  setState(UIApplicationStateBackground);
  [passcode start];
  EXPECT_EQ(take(), Lines{kBusy});
}

TEST_F(PasscodeManager, ForgetsTheRotationOfTheLastTime) {
  [passcode setSupportedInterfaceOrientations:24];
  [passcode setAutoRotateToInterfaceOrientations:8];
  [passcode setShouldAutorotate:YES];
  [passcode start];
  EXPECT_EQ([passcode supportedInterfaceOrientations], 0u);
  EXPECT_EQ([passcode autoRotateToInterfaceOrientations], 0u);
  EXPECT_EQ([passcode shouldAutorotate], NO);
}

TEST_F(PasscodeManager, CopiesTheRotationOfTheHostsTopController) {
  QVTestController *const root = [[[QVTestController alloc] init] autorelease];
  QVTestController *const top = [[[QVTestController alloc] init] autorelease];
  top->rotates = YES;
  top->orientations = 24;
  [window setRootViewController:root];
  [root presentViewController:top animated:NO completion:nil];
  startAndShow();
  EXPECT_EQ([passcode supportedInterfaceOrientations], 24u);
  EXPECT_EQ([passcode shouldAutorotate], YES);
  EXPECT_EQ([passcode autoRotateToInterfaceOrientations], 0u);
  EXPECT_EQ([[passcode windowViewController] supportedInterfaceOrientations], 24u);
}

TEST_F(PasscodeManager, WithoutATopControllerAnswersWithItsOwnDefaults) {
  startAndShow();
  EXPECT_EQ([passcode supportedInterfaceOrientations], 0u);
  EXPECT_EQ([passcode shouldAutorotate], NO);
  EXPECT_EQ([[passcode windowViewController] supportedInterfaceOrientations], 2u);
  EXPECT_EQ([[passcode windowViewController] shouldAutorotate], NO);
}

TEST_F(PasscodeManager, InAnAppWithoutAKeyWindowShowsItsOwnAllTheSame) {
  [window setHidden:YES];
  ASSERT_EQ([[UIApplication sharedApplication] keyWindow], nil);
  startAndShow();
  EXPECT_EQ([passcode appKeyWindow], nil);
  [passcode stop];
  EXPECT_TRUE([[passcode extensionWindow] isHidden]);
}

TEST_F(PasscodeManager, ThatStopsHidesItsWindowAndGivesTheKeyStateBack) {
  startAndShow();
  [passcode stop];
  EXPECT_EQ([passcode isPasscodeExtensionActive], NO);
  EXPECT_TRUE([[passcode extensionWindow] isHidden]);
  EXPECT_EQ([[passcode extensionWindow] rootViewController], nil);
  EXPECT_EQ([passcode windowViewController], nil);
  EXPECT_TRUE([window isKeyWindow]);
}

TEST_F(PasscodeManager, ThatStopsDismissesWhatIsPresentedThenAsksForRotation) {
  static std::vector<id> asked;
  static IMP dismiss;
  asked.clear();
  dismiss = class_getMethodImplementation([UIViewController class], @selector(dismissViewControllerAnimated:
                                                                                                 completion:));
  startAndShow();
  QVTestController *const presented = [[[QVTestController alloc] init] autorelease];
  presented->name = "presented";
  UIViewController *const root = [passcode windowViewController];
  [root presentViewController:presented animated:NO completion:nil];
  replaceMethod([UIViewController class], "dismissViewControllerAnimated:completion:",
                reinterpret_cast<IMP>(+[](id self, SEL selector, BOOL animated, id completion) {
                  if (asked.empty() || asked.back() != self)
                    note(std::string("dismiss") + (animated ? ", animated" : "") +
                         (completion ? ", with a completion" : ""));
                  asked.push_back(self);
                  reinterpret_cast<void (*)(id, SEL, BOOL, id)>(dismiss)(self, selector, animated, completion);
                }));
  replaceMethod(object_getClass([UIViewController class]), "attemptRotationToDeviceOrientation",
                reinterpret_cast<IMP>(
                    +[](id, SEL) { note([manager() isPasscodeExtensionActive] ? "rotate while active" : "rotate"); }));
  take();
  [passcode stop];
  EXPECT_EQ(asked.front(), presented);
  EXPECT_EQ(asked.back(), root);
  const Lines heard = take();
  EXPECT_EQ(heard.front(), "dismiss");
  EXPECT_EQ(heard.back(), "rotate");
  EXPECT_EQ(std::count(heard.begin(), heard.end(), "presented did disappear"), 1);
  EXPECT_EQ([presented presentingViewController], nil);
}

TEST_F(PasscodeManager, ThatIsNotActiveStopsNothing) {
  replaceMethod(object_getClass([UIViewController class]), "attemptRotationToDeviceOrientation",
                reinterpret_cast<IMP>(+[](id, SEL) { note("rotate"); }));
  [passcode stop];
  EXPECT_EQ(take(), Lines{});
  startAndShow();
  [passcode stop];
  take();
  UIWindow *const other = show(UIWindowLevelNormal);
  [passcode stop];
  EXPECT_EQ(take(), Lines{});
  EXPECT_TRUE([other isKeyWindow]);
}

TEST_F(PasscodeManager, ThatIsStoppedBeforeItsWindowIsShownShowsNone) {
  [passcode start];
  [passcode stop];
  take();
  turnMainQueue();
  EXPECT_EQ(take(), Lines{});
  EXPECT_EQ([passcode extensionWindow], nil);
  EXPECT_TRUE([window isKeyWindow]);
}

TEST_F(PasscodeManager, ThatIsStoppedBeforeItsSecondRoundIsShownLeavesTheHostsWindowsAlone) {
  startAndShow();
  UIWindow *const alert = show(UIWindowLevelAlert + 1);
  [passcode stop];
  ASSERT_EQ([alert windowLevel], UIWindowLevelAlert + 1);
  ASSERT_TRUE([alert isKeyWindow]);
  [alert setWindowLevel:UIWindowLevelNormal + 5];
  [window makeKeyWindow];
  [passcode start];
  [passcode stop];
  EXPECT_EQ([passcode isPasscodeExtensionActive], NO);
  EXPECT_EQ([alert windowLevel], UIWindowLevelNormal + 5);
  EXPECT_TRUE([window isKeyWindow]);
  turnMainQueue();
  EXPECT_EQ([alert windowLevel], UIWindowLevelNormal + 5);
  EXPECT_TRUE([window isKeyWindow]);
  EXPECT_TRUE([[passcode extensionWindow] isHidden]);
}

TEST_F(PasscodeManager, ThatIsStoppedBeforeItsWindowIsShownAsksForRotationAllTheSame) {
  replaceMethod(object_getClass([UIViewController class]), "attemptRotationToDeviceOrientation",
                reinterpret_cast<IMP>(+[](id, SEL) { note("rotate"); }));
  [passcode start];
  take();
  [passcode stop];
  EXPECT_EQ(take(), Lines{"rotate"});
}

TEST_F(PasscodeManager, ThatIsStoppedAndStartedBeforeItsWindowIsShownShowsItOnce) {
  [passcode start];
  [passcode stop];
  [passcode start];
  take();
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"displayExtension"});
  EXPECT_EQ([passcode appKeyWindow], window);
  [passcode stop];
  EXPECT_TRUE([window isKeyWindow]);
}

TEST_F(PasscodeManager, KeepsItsWindowForTheNextStartAndMakesANewController) {
  startAndShow();
  UIWindow *const first = [passcode extensionWindow];
  NSMutableArray *const lowered = [passcode appVisibleWindows];
  UIViewController *const controller = [[[passcode windowViewController] retain] autorelease];
  [first setWindowLevel:5];
  [passcode stop];
  startAndShow();
  EXPECT_EQ([passcode extensionWindow], first);
  EXPECT_EQ([passcode appVisibleWindows], lowered);
  EXPECT_EQ([first windowLevel], UIWindowLevelAlert);
  EXPECT_NE([passcode windowViewController], controller);
}

TEST_F(PasscodeManager, AsksTheSDKAnewAtEachStart) {
  startAndShow();
  [passcode stop];
  [sdk->appInfo release];
  sdk->appInfo = [@{@"PasscodeExtFKData" : @"second"} retain];
  [passcode start];
  EXPECT_TRUE([[passcode getPasscodeExtensionFK] isEqual:@"second"]);
  EXPECT_EQ([passcode getActivityPasteboardKey], nil);
}

TEST_F(PasscodeManager, ThatIsHandedAResultStopsAndThenHandsItOnUnchanged) {
  startAndShow();
  take();
  sdk->whenHanded = [^{
    note([manager() isPasscodeExtensionActive] ? "still active" : "stopped");
  } copy];
  NSDictionary *const result = @{@"checkInRequired" : @YES};
  [passcode postPasscodeExtensionResult:result];
  EXPECT_EQ(take(), (Lines{"sdk postPasscodeExtensionResult:", "stopped"}));
  EXPECT_EQ([sdk->results lastObject], result);
  EXPECT_TRUE([window isKeyWindow]);
  [passcode postPasscodeExtensionResult:nil];
  EXPECT_EQ([sdk->results lastObject], [NSNull null]);
}

TEST_F(PasscodeManager, MayBeStoppedAndStartedByTheSDKThatIsHandedTheResult) {
  startAndShow();
  sdk->whenHanded = [^{
    [manager() stop];
    [manager() start];
  } copy];
  take();
  [passcode postPasscodeExtensionResult:@{}];
  EXPECT_EQ([passcode isPasscodeExtensionActive], YES);
  turnMainQueue();
  EXPECT_EQ(take(), (Lines{"sdk postPasscodeExtensionResult:", "sdk getAppInfo", "displayExtension"}));
}

TEST_F(PasscodeManager, IsStoppedByTheResultThroughItsOwnMethod) {
  replaceMethod(managerClass(), "stop", reinterpret_cast<IMP>(+[](id, SEL) { note("stop"); }));
  [passcode postPasscodeExtensionResult:nil];
  EXPECT_EQ(take(), (Lines{"stop", "sdk postPasscodeExtensionResult:"}));
}

TEST_F(PasscodeManager, ReleasesEachControllerThatItHasShown) {
  static int deallocations;
  static IMP original;
  deallocations = 0;
  original = class_getMethodImplementation(windowControllerClass(), @selector(dealloc));
  replaceMethod(windowControllerClass(), "dealloc", reinterpret_cast<IMP>(+[](id self, SEL selector) {
                  ++deallocations;
                  reinterpret_cast<void (*)(id, SEL)>(original)(self, selector);
                }));
  for (int round = 0; round < 200; ++round) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    startAndShow();
    [passcode stop];
    [pool drain];
  }
  EXPECT_EQ(deallocations, 200);
  int hidden = 0;
  for (UIWindow *each in [[UIApplication sharedApplication] windows])
    hidden += [each isHidden];
  EXPECT_EQ(hidden, 1);
}
