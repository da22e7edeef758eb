#include "Rotation.h"
#include "Raised.h"
#include "UIKitTest.h"

@interface Turning : UIViewController {
@public
  BOOL refuses;
  UIInterfaceOrientationMask mask;
}
@end

@implementation Turning
- (BOOL)shouldAutorotate {
  notes->push_back(std::string([[self title] UTF8String]) + " shouldAutorotate");
  return !refuses;
}
- (UIInterfaceOrientationMask)supportedInterfaceOrientations {
  notes->push_back(std::string([[self title] UTF8String]) + " supported");
  return mask;
}
- (void)willRotateToInterfaceOrientation:(UIInterfaceOrientation)orientation duration:(NSTimeInterval)duration {
  (void)duration;
  notes->push_back([[NSString stringWithFormat:@"%@ will turn to %ld", [self title], (long)orientation] UTF8String]);
}
- (void)didRotateFromInterfaceOrientation:(UIInterfaceOrientation)orientation {
  notes->push_back([[NSString stringWithFormat:@"%@ turned from %ld", [self title], (long)orientation] UTF8String]);
}
@end

@interface OldTurning : UIViewController
@end

@implementation OldTurning
- (BOOL)shouldAutorotateToInterfaceOrientation:(UIInterfaceOrientation)orientation {
  return orientation == UIInterfaceOrientationLandscapeLeft;
}
@end

@interface PortraitDelegate : NSObject <UIApplicationDelegate>
@end

@implementation PortraitDelegate
- (UIInterfaceOrientationMask)application:(UIApplication *)application
    supportedInterfaceOrientationsForWindow:(UIWindow *)window {
  (void)application;
  (void)window;
  return UIInterfaceOrientationMaskPortrait;
}
@end

namespace {

class Rotation : public UIKitTest {
protected:
  Turning *shown(NSString *title, UIWindowLevel level = UIWindowLevelNormal) {
    UIWindow *const window = shownWindow();
    [window setWindowLevel:level];
    Turning *const controller = [[[Turning alloc] init] autorelease];
    [controller setTitle:title];
    controller->mask = UIInterfaceOrientationMaskAll;
    [window setRootViewController:controller];
    return controller;
  }
  void hold(UIDeviceOrientation orientation) { [[UIDevice currentDevice] qvdevice_setOrientation:orientation]; }
};

TEST_F(Rotation, ToTheLeftTurnsTheScreenToTheRightWhenTheControllerLetsIt) {
  Turning *const controller = shown(@"main");
  hold(UIDeviceOrientationLandscapeLeft);
  EXPECT_EQ(written, (Notes{"main shouldAutorotate", "main supported", "main will turn to 3", "main turned from 1"}));
  EXPECT_EQ([application statusBarOrientation], UIInterfaceOrientationLandscapeRight);
  EXPECT_EQ([controller interfaceOrientation], UIInterfaceOrientationLandscapeRight);
  EXPECT_TRUE(CGRectEqualToRect([[UIScreen mainScreen] bounds], CGRectMake(0, 0, 844, 390)));
  EXPECT_TRUE(CGRectEqualToRect([[[controller view] window] frame], CGRectMake(0, 0, 844, 390)));
  EXPECT_TRUE(CGRectEqualToRect([[controller view] frame], CGRectMake(0, 0, 844, 390)));
  EXPECT_TRUE(CGRectEqualToRect([[UIScreen mainScreen] nativeBounds], CGRectMake(0, 0, 1170, 2532)));
}

TEST_F(Rotation, IsNoMatterOfOrientationsWhenTheControllerRefusesIt) {
  Turning *const controller = shown(@"main");
  controller->refuses = YES;
  hold(UIDeviceOrientationLandscapeRight);
  EXPECT_EQ(written, Notes{"main shouldAutorotate"});
  EXPECT_EQ([application statusBarOrientation], UIInterfaceOrientationPortrait);
  EXPECT_EQ([[UIDevice currentDevice] orientation], UIDeviceOrientationLandscapeRight);
}

TEST_F(Rotation, ToAnOrientationThatIsNotSupportedDoesNothing) {
  Turning *const controller = shown(@"main");
  controller->mask = UIInterfaceOrientationMaskPortrait;
  hold(UIDeviceOrientationLandscapeRight);
  EXPECT_EQ([application statusBarOrientation], UIInterfaceOrientationPortrait);
}

TEST_F(Rotation, IsAskedOfTheFrontmostWindowAndToldToAll) {
  shown(@"above", UIWindowLevelAlert);
  shown(@"below");
  hold(UIDeviceOrientationLandscapeLeft);
  EXPECT_EQ(written, (Notes{"above shouldAutorotate", "above supported", "below will turn to 3", "above will turn to 3",
                            "below turned from 1", "above turned from 1"}));
}

TEST_F(Rotation, IsNotAskedOfWhatIsHiddenOrBelongsToTheKeyboard) {
  Turning *const main = shown(@"main"), *const hidden = shown(@"hidden", UIWindowLevelAlert);
  [[[hidden view] window] setHidden:YES];
  UITextField *const field = view<UITextField>(CGRectMake(0, 0, 50, 50), [main view]);
  [field becomeFirstResponder];
  hold(UIDeviceOrientationLandscapeLeft);
  EXPECT_EQ(written.at(0), "main shouldAutorotate");
  EXPECT_TRUE(CGRectEqualToRect([[[application windows] lastObject] frame], CGRectMake(0, 0, 844, 390)));
}

TEST_F(Rotation, IsAskedOfAPresentedControllerThatFillsTheWindowButNotOfASheet) {
  Turning *const main = shown(@"main");
  for (const auto style : {UIModalPresentationFullScreen, UIModalPresentationPageSheet}) {
    Turning *const above = [[[Turning alloc] init] autorelease];
    [above setTitle:@"above"];
    above->refuses = YES;
    [above setModalPresentationStyle:style];
    [main presentViewController:above animated:NO completion:nil];
    written.clear();
    hold(UIDeviceOrientationLandscapeLeft);
    EXPECT_EQ(written.at(0),
              style == UIModalPresentationFullScreen ? "above shouldAutorotate" : "main shouldAutorotate");
    [main dismissViewControllerAnimated:NO completion:nil];
    hold(UIDeviceOrientationPortrait);
  }
}

TEST_F(Rotation, IsLimitedByTheAppsDelegate) {
  PortraitDelegate *const delegate = [[[PortraitDelegate alloc] init] autorelease];
  [application setDelegate:delegate];
  Turning *const controller = shown(@"main");
  hold(UIDeviceOrientationLandscapeLeft);
  EXPECT_EQ([application statusBarOrientation], UIInterfaceOrientationPortrait);
  controller->mask = UIInterfaceOrientationMaskLandscape;
  EXPECT_EQ(raisedBy([&] { hold(UIDeviceOrientationLandscapeRight); }), "UIApplicationInvalidInterfaceOrientation");
}

TEST_F(Rotation, UpsideDownIsForPadsUnlessTheAppSaysSo) {
  shown(@"main");
  hold(UIDeviceOrientationPortraitUpsideDown);
  EXPECT_EQ([application statusBarOrientation], UIInterfaceOrientationPortrait);
}

TEST_F(Rotation, OfADeviceThatLiesFlatIsNone) {
  shown(@"main");
  hold(UIDeviceOrientationFaceUp);
  EXPECT_EQ(written, Notes{});
}

TEST_F(Rotation, IsAttemptedAgainWhenTheAppAsksForIt) {
  Turning *const controller = shown(@"main");
  controller->refuses = YES;
  hold(UIDeviceOrientationLandscapeLeft);
  controller->refuses = NO;
  written.clear();
  [UIViewController attemptRotationToDeviceOrientation];
  EXPECT_EQ([application statusBarOrientation], UIInterfaceOrientationLandscapeRight);
  written.clear();
  [UIViewController attemptRotationToDeviceOrientation];
  EXPECT_EQ(written, Notes{}) << "it is that way up already";
}

TEST_F(Rotation, OfAControllerThatSaysNothingIsAllowedButUpsideDownOnAPhone) {
  UIViewController *const plain = [[[UIViewController alloc] init] autorelease];
  EXPECT_TRUE([plain shouldAutorotate]);
  EXPECT_EQ([plain supportedInterfaceOrientations], UIInterfaceOrientationMaskAllButUpsideDown);
  EXPECT_TRUE([plain shouldAutorotateToInterfaceOrientation:UIInterfaceOrientationPortrait]);
  EXPECT_FALSE([plain shouldAutorotateToInterfaceOrientation:UIInterfaceOrientationLandscapeLeft]);
}

TEST_F(Rotation, TellsOfTheDeviceFirst) {
  Turning *const controller = shown(@"main");
  controller->refuses = YES;
  const id observer = [[NSNotificationCenter defaultCenter] addObserverForName:UIDeviceOrientationDidChangeNotification
                                                                        object:nil
                                                                         queue:nil usingBlock:^(NSNotification *) {
                                                                           notes->push_back("device");
                                                                         }];
  hold(UIDeviceOrientationLandscapeLeft);
  [[NSNotificationCenter defaultCenter] removeObserver:observer];
  EXPECT_EQ(written, (Notes{"device", "main shouldAutorotate"}));
}

} // namespace
