#import <UIKit/UIKit.h>

#import "Raised.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
std::vector<std::string> *notes;
}

@interface NotedController : UIViewController
@end

@implementation NotedController
- (void)viewDidLoad {
  notes->push_back("didLoad");
}
- (void)viewWillAppear:(BOOL)animated {
  (void)animated;
  notes->push_back("willAppear");
}
- (void)viewDidAppear:(BOOL)animated {
  (void)animated;
  notes->push_back("didAppear");
}
- (void)viewWillDisappear:(BOOL)animated {
  (void)animated;
  notes->push_back("willDisappear");
}
- (void)viewDidDisappear:(BOOL)animated {
  (void)animated;
  notes->push_back("didDisappear");
}
@end

@interface WindowWatcher : NSObject
@end

@implementation WindowWatcher
- (void)note:(NSNotification *)notification {
  notes->push_back([[notification name] UTF8String]);
}
@end

namespace {

using Notes = std::vector<std::string>;

class View : public ::testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    notes = &written;
  }
  void TearDown() override {
    [pool drain];
    notes = nullptr;
  }
  UIWindow *window() { return [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease]; }
  UIView *view(CGRect frame = CGRectZero) { return [[[UIView alloc] initWithFrame:frame] autorelease]; }

  NSAutoreleasePool *pool = nil;
  Notes written;
};

TEST_F(View, FrameBoundsAndCenterAgree) {
  UIView *const each = view(CGRectMake(10, 20, 100, 50));
  EXPECT_TRUE(CGRectEqualToRect([each bounds], CGRectMake(0, 0, 100, 50)));
  EXPECT_TRUE(CGPointEqualToPoint([each center], CGPointMake(60, 45)));
  [each setCenter:CGPointMake(0, 0)];
  EXPECT_TRUE(CGRectEqualToRect([each frame], CGRectMake(-50, -25, 100, 50)));
  [each setBounds:CGRectMake(5, 5, 20, 10)];
  EXPECT_TRUE(CGRectEqualToRect([each frame], CGRectMake(-10, -5, 20, 10)));
  EXPECT_TRUE(CGRectEqualToRect([each bounds], CGRectMake(5, 5, 20, 10)));
}

TEST_F(View, ASubviewKnowsItsSuperviewAndItsWindow) {
  UIWindow *const top = window();
  UIView *const middle = view(), *const leaf = view();
  [middle addSubview:leaf];
  EXPECT_EQ([leaf window], nil);
  [top addSubview:middle];
  EXPECT_EQ([leaf window], top);
  EXPECT_EQ([leaf superview], middle);
  EXPECT_TRUE([leaf isDescendantOfView:top]);
  [middle removeFromSuperview];
  EXPECT_EQ([leaf window], nil);
  EXPECT_EQ([[top subviews] count], 0u);
}

TEST_F(View, AViewHasOneSuperviewAtATimeAndAnOrder) {
  UIView *const first = view(), *const second = view(), *const a = view(), *const b = view();
  [first addSubview:a];
  [first addSubview:b];
  [first bringSubviewToFront:a];
  EXPECT_EQ([[first subviews] lastObject], a);
  [first sendSubviewToBack:a];
  EXPECT_EQ([[first subviews] lastObject], b);
  [second addSubview:a];
  EXPECT_EQ([[first subviews] count], 1u);
  EXPECT_EQ([a superview], second);
}

TEST_F(View, AViewCannotBecomeItsOwnDescendant) {
  UIView *const outer = view(), *const inner = view();
  [outer addSubview:inner];
  EXPECT_EQ(raisedBy([&] { [inner addSubview:outer]; }), "NSInvalidArgumentException");
  EXPECT_EQ(raisedBy([&] { [outer addSubview:outer]; }), "NSInvalidArgumentException");
}

TEST_F(View, ATagIsFoundInTheWholeTree) {
  UIView *const outer = view(), *const middle = view(), *const inner = view();
  [outer addSubview:middle];
  [middle addSubview:inner];
  [inner setTag:7];
  EXPECT_EQ([outer viewWithTag:7], inner);
  EXPECT_EQ([outer viewWithTag:8], nil);
}

TEST_F(View, AWindowIsHiddenUntilItIsShown) {
  UIWindow *const each = window();
  EXPECT_TRUE([each isHidden]);
  [each makeKeyAndVisible];
  EXPECT_FALSE([each isHidden]);
  EXPECT_TRUE([each isKeyWindow]);
  [each setHidden:YES];
  EXPECT_FALSE([each isKeyWindow]);
}

TEST_F(View, WindowsTellOfBeingShownHiddenAndKey) {
  WindowWatcher *const watcher = [[[WindowWatcher alloc] init] autorelease];
  NSNotificationCenter *const center = [NSNotificationCenter defaultCenter];
  for (NSString *name in @[
         UIWindowDidBecomeVisibleNotification, UIWindowDidBecomeHiddenNotification, UIWindowDidBecomeKeyNotification,
         UIWindowDidResignKeyNotification
       ])
    [center addObserver:watcher selector:@selector(note:) name:name object:nil];
  UIWindow *const first = window(), *const second = window();
  [first makeKeyAndVisible];
  [second makeKeyAndVisible];
  [second setHidden:YES];
  [center removeObserver:watcher];
  EXPECT_EQ(written, (Notes{"UIWindowDidBecomeVisibleNotification", "UIWindowDidBecomeKeyNotification",
                            "UIWindowDidBecomeVisibleNotification", "UIWindowDidResignKeyNotification",
                            "UIWindowDidBecomeKeyNotification", "UIWindowDidResignKeyNotification",
                            "UIWindowDidBecomeHiddenNotification", "UIWindowDidBecomeKeyNotification"}));
}

TEST_F(View, TheApplicationListsShownWindowsByLevelAndForgetsThoseThatAreGone) {
  UIApplication *const application = [[[UIApplication alloc] init] autorelease];
  EXPECT_EQ([UIApplication sharedApplication], application);
  EXPECT_EQ(raisedBy([&] { [[UIApplication alloc] init]; }), "NSInternalInconsistencyException");
  UIWindow *const alert = window(), *const normal = window();
  [alert setWindowLevel:UIWindowLevelAlert];
  [alert setHidden:NO];
  [normal makeKeyAndVisible];
  {
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    UIWindow *const brief = [[UIWindow alloc] initWithFrame:CGRectZero];
    [brief setHidden:NO];
    EXPECT_EQ([[application windows] count], 3u);
    [inner drain];
    [brief release];
  }
  ASSERT_EQ([[application windows] count], 2u);
  EXPECT_EQ([[application windows] objectAtIndex:0], normal);
  EXPECT_EQ([[application windows] objectAtIndex:1], alert);
  EXPECT_EQ([application keyWindow], normal);
}

TEST_F(View, ARootControllerAppearsAndDisappearsWithItsWindow) {
  UIWindow *const each = window();
  NotedController *const controller = [[[NotedController alloc] init] autorelease];
  [each setRootViewController:controller];
  EXPECT_EQ(written, Notes{});
  [each makeKeyAndVisible];
  EXPECT_EQ(written, (Notes{"didLoad", "willAppear", "didAppear"}));
  EXPECT_EQ([[controller view] window], each);
  EXPECT_TRUE(CGRectEqualToRect([[controller view] frame], [each bounds]));
  written.clear();
  [each setRootViewController:nil];
  EXPECT_EQ(written, (Notes{"willDisappear", "didDisappear"}));
}

TEST_F(View, TheResponderChainGoesFromViewToControllerToWindow) {
  UIWindow *const each = window();
  UIViewController *const controller = [[[UIViewController alloc] init] autorelease];
  UIView *const leaf = view();
  [[controller view] addSubview:leaf];
  [each setRootViewController:controller];
  [each makeKeyAndVisible];
  EXPECT_EQ([leaf nextResponder], [controller view]);
  EXPECT_EQ([[controller view] nextResponder], controller);
  EXPECT_EQ([controller nextResponder], each);
}

TEST_F(View, PresentingAndDismissingRunTheirCompletions) {
  UIWindow *const each = window();
  UIViewController *const root = [[[UIViewController alloc] init] autorelease];
  NotedController *const sheet = [[[NotedController alloc] init] autorelease];
  [each setRootViewController:root];
  [each makeKeyAndVisible];
  [root presentViewController:sheet animated:NO completion:^{
    notes->push_back("presented");
  }];
  EXPECT_EQ([root presentedViewController], sheet);
  EXPECT_EQ([sheet presentingViewController], root);
  EXPECT_EQ(raisedBy([&] { [root presentViewController:sheet animated:NO completion:nil]; }),
            "NSInvalidArgumentException");
  [sheet dismissViewControllerAnimated:NO completion:^{
    notes->push_back("dismissed");
  }];
  EXPECT_EQ([root presentedViewController], nil);
  EXPECT_EQ([sheet presentingViewController], nil);
  EXPECT_EQ(written,
            (Notes{"didLoad", "willAppear", "didAppear", "presented", "willDisappear", "didDisappear", "dismissed"}));
}

TEST_F(View, TheDeviceIsAPhoneOfTheNewestSystemUnlessToldOtherwise) {
  EXPECT_EQ([[UIDevice currentDevice] userInterfaceIdiom], UIUserInterfaceIdiomPhone);
  EXPECT_STREQ([[[UIDevice currentDevice] systemVersion] UTF8String], "17.0");
  EXPECT_STREQ([[[UIDevice currentDevice] model] UTF8String], "iPhone");
}

TEST_F(View, AColourIsEqualByItsComponents) {
  EXPECT_TRUE([[UIColor redColor] isEqual:[UIColor colorWithRed:1 green:0 blue:0 alpha:1]]);
  EXPECT_FALSE([[UIColor redColor] isEqual:[[UIColor redColor] colorWithAlphaComponent:0.5]]);
  EXPECT_FALSE([[UIColor redColor] isEqual:@"red"]);
}

} // namespace
