// What the extension window's controller shows, and what it asks the extension.
#include "PasscodeWindow.h"

#include <objc/runtime.h>

#include <set>

namespace {

using PasscodeRequest = PasscodeWindow;

const std::string kDisplay = "-[QVSBPasscodeExtensionWindowViewController displayExtension]";
const std::string kPresents = "QVSBPasscodeExtensionWindowViewController presents "
                              "QVSBApplicationExtensionViewController";

/// Leaves a key out of what the SDK tells.
void leaveOut(QVTestSDK *sdk, NSString *key) {
  NSMutableDictionary *const rest = [NSMutableDictionary dictionaryWithDictionary:sdk->appInfo];
  [rest removeObjectForKey:key];
  [sdk->appInfo release];
  sdk->appInfo = [rest copy];
}

} // namespace

TEST_F(PasscodeRequest, IsMadeByAViewControllerWhoseMethodsHaveTheirTypes) {
  EXPECT_EQ([windowControllerClass() superclass], [UIViewController class]);
  const std::pair<const char *, const char *> methods[] = {
      {"init", "@16@0:8"},
      {"viewWillAppear:", "v20@0:8C16"},
      {"viewDidAppear:", "v20@0:8C16"},
      {"displayExtension", "v16@0:8"},
      {"shouldAutorotate", "C16@0:8"},
      {"shouldAutorotateToInterfaceOrientation:", "C24@0:8q16"},
      {"supportedInterfaceOrientations", "Q16@0:8"},
      {"extensionViewController", "@16@0:8"},
      {"setExtensionViewController:", "v24@0:8@16"},
  };
  for (const auto &[selector, types] : methods) {
    const Method method = class_getInstanceMethod(windowControllerClass(), sel_registerName(selector));
    ASSERT_TRUE(method != nullptr) << selector;
    EXPECT_STREQ(method_getTypeEncoding(method), types) << selector;
  }
}

TEST_F(PasscodeRequest, HoldsTheKeyMaterialAndTheAppsIdentityInOneAttachment) {
  [controller displayExtension];
  EXPECT_EQ(take(), Lines{kPresents});
  NSDictionary *const expected = @{
    @"FK" : [@"key material" dataUsingEncoding:NSUTF8StringEncoding],
    @"ActivityPasteboardKey" : @"pasteboard key",
    @"AppName" : @"Shown",
    @"AppIcon" : [@"icon" dataUsingEncoding:NSUTF8StringEncoding],
    @"BundleId" : @"com.example.host",
  };
  EXPECT_TRUE([request() isEqual:expected]) << support::text([request() description]);
  EXPECT_TRUE([request() isKindOfClass:[NSMutableDictionary class]]);
  EXPECT_TRUE([[[controller extensionViewController] identifier] isEqual:@"com.example.manager.passcode"]);
}

TEST_F(PasscodeRequest, OfAnAppWithoutADisplayNameHoldsItsBundleName) {
  setInfo(@{@"CFBundleName" : @"Plain"});
  [controller displayExtension];
  EXPECT_TRUE([[request() objectForKey:@"AppName"] isEqual:@"Plain"]);
}

TEST_F(PasscodeRequest, OfAnAppWithNeitherNameHoldsNone) {
  setInfo(@{});
  [controller displayExtension];
  EXPECT_EQ([[request() allKeys] count], 4u);
  EXPECT_EQ([request() objectForKey:@"AppName"], nil);
}

TEST_F(PasscodeRequest, LeavesOutAnIconAndAnIdentifierThatThereAreNot) {
  leaveOut(sdk, @"AppIconData");
  [manager() setAppInfo:sdk->appInfo];
  setBundleIdentifier(nil);
  [controller displayExtension];
  const std::set<std::string> expected = {"FK", "ActivityPasteboardKey", "AppName"};
  std::set<std::string> keys;
  for (NSString *key in [request() allKeys])
    keys.insert(support::text(key));
  EXPECT_EQ(keys, expected);
}

TEST_F(PasscodeRequest, WithoutKeyMaterialIsRefusedAndTheSDKHandedNothing) {
  leaveOut(sdk, @"PasscodeExtFKData");
  [manager() setAppInfo:sdk->appInfo];
  [controller displayExtension];
  EXPECT_EQ(take(),
            (Lines{"log 0 " + kDisplay + ": Passcode Extension FK is invalid.", "sdk postPasscodeExtensionResult:"}));
  EXPECT_EQ([sdk->results objectAtIndex:0], [NSNull null]);
  EXPECT_EQ([controller extensionViewController], nil);
}

TEST_F(PasscodeRequest, WithoutAPasteboardKeyIsRefusedAndTheSDKHandedNothing) {
  leaveOut(sdk, @"ActivityPasteboardKey");
  [manager() setAppInfo:sdk->appInfo];
  [controller displayExtension];
  EXPECT_EQ(take(), (Lines{"log 0 " + kDisplay + ": Passcode Extension Activity PasteboardKey is invalid.",
                           "sdk postPasscodeExtensionResult:"}));
  EXPECT_EQ([sdk->results objectAtIndex:0], [NSNull null]);
  EXPECT_EQ([controller extensionViewController], nil);
}

TEST_F(PasscodeRequest, WithoutAnyAppInformationIsRefusedForItsKeyMaterial) {
  [manager() setAppInfo:nil];
  [controller displayExtension];
  EXPECT_EQ(take().front(), "log 0 " + kDisplay + ": Passcode Extension FK is invalid.");
}

TEST_F(PasscodeRequest, WithoutAnIdentifierOfTheExtensionFailsTheHostsAssertion) {
  leaveOut(sdk, @"PasscodeExtensionBundleId");
  [manager() setAppInfo:sdk->appInfo];
  const std::string raised = raisedBy([&] { [controller displayExtension]; });
  EXPECT_TRUE(raised.ends_with("Invalid parameter not satisfying: identifier != nil")) << raised;
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PasscodeRequest, IsPresentedAtTheControllersViewWhereItIsAPopover) {
  replaceMethod([UIViewController class], "modalPresentationStyle",
                reinterpret_cast<IMP>(+[](id, SEL) -> NSInteger { return UIModalPresentationPopover; }));
  [controller displayExtension];
  UIPopoverPresentationController *const popover = [[controller extensionViewController] popoverPresentationController];
  ASSERT_NE(popover, nil);
  EXPECT_EQ([popover sourceView], [controller view]);
}

TEST_F(PasscodeRequest, IsMadeWhenTheWindowIsOnTheScreenAndNeverTwice) {
  [controller viewWillAppear:NO];
  EXPECT_EQ(take(), Lines{});
  [controller viewDidAppear:NO];
  EXPECT_EQ(take(), Lines{kPresents});
  [controller viewWillAppear:NO];
  [controller viewDidAppear:NO];
  EXPECT_EQ(take(), Lines{});
}

TEST_F(PasscodeRequest, LiesOverALightBlurOfTheWholeWindow) {
  [[controller view] setFrame:CGRectMake(0, 0, 320, 480)];
  [controller viewWillAppear:NO];
  NSArray *const views = [[controller view] subviews];
  ASSERT_EQ([views count], 1u);
  UIVisualEffectView *const blur = [views objectAtIndex:0];
  ASSERT_EQ([blur class], [UIVisualEffectView class]);
  EXPECT_TRUE(CGRectEqualToRect([blur frame], CGRectMake(0, 0, 320, 480)));
  EXPECT_EQ([blur autoresizingMask], 63u);
  EXPECT_TRUE([[blur effect] isKindOfClass:[UIBlurEffect class]]);
}

TEST_F(PasscodeRequest, ThatIsUnderWayGetsNoSecondBlur) {
  [controller viewWillAppear:NO];
  [controller viewDidAppear:NO];
  [controller viewWillAppear:NO];
  EXPECT_EQ([[[controller view] subviews] count], 1u);
}

TEST_F(PasscodeRequest, AsksForTheLightBlur) {
  Class const meta = object_getClass([UIBlurEffect class]);
  static IMP original;
  original = class_getMethodImplementation(meta, @selector(effectWithStyle:));
  replaceMethod(meta, "effectWithStyle:", reinterpret_cast<IMP>(+[](id self, SEL selector, NSInteger style) -> id {
                  note("style " + std::to_string(style));
                  return reinterpret_cast<id (*)(id, SEL, NSInteger)>(original)(self, selector, style);
                }));
  [controller viewWillAppear:NO];
  EXPECT_EQ(take(), Lines{"style 1"});
}

TEST_F(PasscodeRequest, ComesAfterTheSuperclassIsToldThatTheWindowAppears) {
  const auto appear = [](const char *selector) {
    replaceMethod([UIViewController class], selector, reinterpret_cast<IMP>(+[](id self, SEL method, BOOL animated) {
                    note(std::string(sel_getName(method)) + (animated ? " animated" : "") + " over " +
                         std::to_string([[[self view] subviews] count]));
                  }));
  };
  appear("viewWillAppear:");
  appear("viewDidAppear:");
  [controller viewWillAppear:YES];
  EXPECT_EQ(take(), Lines{"viewWillAppear: animated over 0"});
  [controller viewDidAppear:YES];
  EXPECT_EQ(take(), (Lines{"viewDidAppear: animated over 1", kPresents}));
  // It is told each time, and how.
  [controller viewWillAppear:NO];
  [controller viewDidAppear:NO];
  EXPECT_EQ(take(), (Lines{"viewWillAppear: over 1", "viewDidAppear: over 1"}));
}
