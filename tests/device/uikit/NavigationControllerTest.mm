#import "UIKitTest.h"

#import "Raised.h"

@interface PageController : UIViewController
@end

@implementation PageController
- (void)note:(const char *)what {
  notes->push_back(std::string([[self title] UTF8String]) + " " + what);
}
- (void)viewWillAppear:(BOOL)animated {
  [super viewWillAppear:animated];
  [self note:"will appear"];
}
- (void)viewDidAppear:(BOOL)animated {
  [super viewDidAppear:animated];
  [self note:"did appear"];
}
- (void)viewWillDisappear:(BOOL)animated {
  [super viewWillDisappear:animated];
  [self note:"will disappear"];
}
- (void)viewDidDisappear:(BOOL)animated {
  [super viewDidDisappear:animated];
  [self note:"did disappear"];
}
@end

namespace {

class NavigationController : public UIKitTest {
protected:
  PageController *page(NSString *title) {
    PageController *const made = [[[PageController alloc] init] autorelease];
    [made setTitle:title];
    return made;
  }
  UINavigationController *shown(UIViewController *root) {
    UINavigationController *const made = [[[UINavigationController alloc] initWithRootViewController:root] autorelease];
    [shownWindow() setRootViewController:made];
    return made;
  }
};

TEST_F(NavigationController, ShowsTheLastOfItsControllers) {
  PageController *const a = page(@"A"), *const b = page(@"B");
  UINavigationController *const navigation = shown(a);
  EXPECT_EQ([a navigationController], navigation);
  EXPECT_EQ([navigation topViewController], a);
  EXPECT_EQ([[a view] superview], [navigation view]);
  EXPECT_TRUE(CGRectEqualToRect([[a view] frame], [[navigation view] bounds]));
  EXPECT_EQ([[[navigation view] superview] nextResponder], application);
  EXPECT_EQ(written, (Notes{"A will appear", "A did appear"}));
  written.clear();
  [navigation pushViewController:b animated:NO];
  EXPECT_EQ(written, (Notes{"A will disappear", "B will appear", "A did disappear", "B did appear"}));
  EXPECT_TRUE(([[navigation viewControllers] isEqual:@[ a, b ]]));
  EXPECT_EQ([navigation visibleViewController], b);
  EXPECT_EQ([[a view] superview], nil);
  EXPECT_EQ([[b view] window], [application keyWindow]);
  written.clear();
  EXPECT_EQ([navigation popViewControllerAnimated:NO], b);
  EXPECT_EQ(written, (Notes{"B will disappear", "A will appear", "B did disappear", "A did appear"}));
  EXPECT_EQ([b navigationController], nil);
  EXPECT_EQ([navigation popViewControllerAnimated:NO], nil) << "the last one stays";
  EXPECT_EQ([navigation topViewController], a);
}

TEST_F(NavigationController, NotYetShownItTellsNoneOfAppearing) {
  PageController *const a = page(@"A"), *const b = page(@"B");
  UINavigationController *const navigation =
      [[[UINavigationController alloc] initWithRootViewController:a] autorelease];
  [navigation pushViewController:b animated:NO];
  EXPECT_FALSE([navigation isViewLoaded]);
  EXPECT_EQ(written, Notes{});
  [shownWindow() setRootViewController:navigation];
  EXPECT_EQ(written, (Notes{"B will appear", "B did appear"}));
  written.clear();
  [[application keyWindow] setRootViewController:nil];
  EXPECT_EQ(written, (Notes{"B will disappear", "B did disappear"}));
}

TEST_F(NavigationController, GoesBackToAnyOfItsControllers) {
  PageController *const a = page(@"A"), *const b = page(@"B"), *const c = page(@"C");
  UINavigationController *const navigation = shown(a);
  [navigation setViewControllers:@[ a, b, c ] animated:NO];
  EXPECT_TRUE(([[navigation popToViewController:a animated:NO] isEqual:@[ b, c ]]));
  EXPECT_EQ([navigation popToRootViewControllerAnimated:NO], nil);
  [navigation setViewControllers:@[ a, b, c ]];
  EXPECT_TRUE(([[navigation popToRootViewControllerAnimated:NO] isEqual:@[ b, c ]]));
  EXPECT_EQ(raisedBy([&] { [navigation popToViewController:c animated:NO]; }), "NSInternalInconsistencyException");
}

TEST_F(NavigationController, MayLoseAllItsControllers) {
  PageController *const a = page(@"A");
  UINavigationController *const navigation = shown(a);
  [navigation setViewControllers:@[]];
  EXPECT_EQ([navigation topViewController], nil);
  EXPECT_EQ([navigation visibleViewController], nil);
  EXPECT_EQ([[a view] superview], nil);
  [navigation pushViewController:a animated:NO];
  EXPECT_EQ([[a view] window], [application keyWindow]);
}

TEST_F(NavigationController, RefusesWhatCannotBePushed) {
  PageController *const a = page(@"A");
  UINavigationController *const navigation = shown(a);
  UIViewController *const none = nil;
  EXPECT_EQ(raisedBy([&] { [navigation pushViewController:none animated:NO]; }), "NSInvalidArgumentException");
  EXPECT_EQ(raisedBy([&] { [navigation pushViewController:a animated:NO]; }), "NSInvalidArgumentException");
  EXPECT_EQ(raisedBy([&] {
              [navigation pushViewController:[[[UINavigationController alloc] init] autorelease] animated:NO];
            }), "NSInvalidArgumentException");
  EXPECT_EQ([[navigation viewControllers] count], 1u);
}

TEST_F(NavigationController, WhatIsPresentedOnItIsWhatIsSeen) {
  PageController *const a = page(@"A");
  UINavigationController *const navigation = shown(a);
  PageController *const over = page(@"Over");
  [a presentViewController:over animated:NO completion:nil];
  EXPECT_EQ([navigation visibleViewController], over);
  [a dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ([navigation visibleViewController], a);
}

TEST_F(NavigationController, AControllerOutlivesIt) {
  PageController *const a = page(@"A");
  UINavigationController *const navigation = [[UINavigationController alloc] initWithRootViewController:a];
  [navigation release];
  EXPECT_EQ([a navigationController], nil);
}

} // namespace
