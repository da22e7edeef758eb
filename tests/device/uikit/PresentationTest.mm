#include "UIKitTest.h"

@interface Told : UIViewController {
@public
  void (^whenAppearing)(void);
  void (^whenThere)(void);
}
@end

@implementation Told
- (void)dealloc {
  [whenAppearing release];
  [whenThere release];
  [super dealloc];
}
- (void)tell:(const char *)what {
  notes->push_back(std::string([[self title] UTF8String]) + " " + what);
}
- (void)viewWillAppear:(BOOL)animated {
  [super viewWillAppear:animated];
  [self tell:"willAppear"];
  if (whenAppearing) whenAppearing();
}
- (void)viewDidAppear:(BOOL)animated {
  [super viewDidAppear:animated];
  [self tell:"didAppear"];
  if (whenThere) whenThere();
}
- (void)viewWillDisappear:(BOOL)animated {
  [super viewWillDisappear:animated];
  [self tell:"willDisappear"];
}
- (void)viewDidDisappear:(BOOL)animated {
  [super viewDidDisappear:animated];
  [self tell:"didDisappear"];
}
@end

namespace {

class Presentation : public UIKitTest {
protected:
  Told *named(NSString *name, UIModalPresentationStyle style = UIModalPresentationFullScreen) {
    Told *const made = [[[Told alloc] init] autorelease];
    [made setTitle:name];
    [made setModalPresentationStyle:style];
    return made;
  }

  // The root of a shown window that has told of nothing yet.
  Told *shownRoot() {
    Told *const root = named(@"root");
    window = shownWindow();
    [window setRootViewController:root];
    written.clear();
    return root;
  }

  UIWindow *window = nil;
};

TEST_F(Presentation, OverTheWholeScreenTakesWhatIsBelowOffIt) {
  Told *const root = shownRoot(), *const above = named(@"above");
  [root presentViewController:above animated:NO completion:nil];
  EXPECT_EQ(written, (Notes{"root willDisappear", "above willAppear", "above didAppear", "root didDisappear"}));
  EXPECT_EQ([[root view] window], nil);
  EXPECT_EQ([[above view] window], window);
  written.clear();
  [root dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ(written, (Notes{"above willDisappear", "root willAppear", "root didAppear", "above didDisappear"}));
  EXPECT_EQ([[root view] window], window);
  EXPECT_EQ([[above view] window], nil);
}

TEST_F(Presentation, OnASheetLeavesWhatIsBelowAlone) {
  Told *const root = shownRoot(), *const above = named(@"above", UIModalPresentationPageSheet);
  [root presentViewController:above animated:NO completion:nil];
  [root dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ(written, (Notes{"above willAppear", "above didAppear", "above willDisappear", "above didDisappear"}));
}

TEST_F(Presentation, IsOnASheetFromRelease13OnUnlessToldOtherwise) {
  EXPECT_EQ([[[[UIViewController alloc] init] autorelease] modalPresentationStyle], UIModalPresentationAutomatic);
}

TEST_F(Presentation, OfSeveralGoesAsAWholeTheUppermostFirst) {
  Told *const root = shownRoot(), *const one = named(@"one", UIModalPresentationPageSheet),
              *const two = named(@"two", UIModalPresentationPageSheet);
  [root presentViewController:one animated:NO completion:nil];
  [one presentViewController:two animated:NO completion:nil];
  written.clear();
  bool done = false;
  bool *const told = &done;
  [root dismissViewControllerAnimated:NO completion:^{
    *told = true;
  }];
  EXPECT_EQ(written, (Notes{"two willDisappear", "one willDisappear", "two didDisappear", "one didDisappear"}));
  EXPECT_TRUE(done);
  EXPECT_EQ([root presentedViewController], nil);
  EXPECT_EQ([one presentedViewController], nil);
  EXPECT_EQ([two presentingViewController], nil);
  EXPECT_EQ([[two view] window], nil);
}

TEST_F(Presentation, UnderAnotherThatCoversItIsNotToldThatItGoes) {
  Told *const root = shownRoot(), *const one = named(@"one"), *const two = named(@"two");
  [root presentViewController:one animated:NO completion:nil];
  [one presentViewController:two animated:NO completion:nil];
  written.clear();
  [root dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ(written, (Notes{"two willDisappear", "root willAppear", "root didAppear", "two didDisappear"}));
}

TEST_F(Presentation, FirstTheUppermostThenTheRestLeavesTheRootAlone) {
  Told *const root = shownRoot(), *const host = named(@"host", UIModalPresentationPageSheet),
              *const guest = named(@"guest", UIModalPresentationPageSheet);
  [root presentViewController:host animated:NO completion:nil];
  [host presentViewController:guest animated:YES completion:nil];
  [[root presentedViewController] dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ([root presentedViewController], host);
  EXPECT_EQ([host presentedViewController], nil);
  [root dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ([root presentedViewController], nil);
  [root dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ([[root view] window], window);
}

TEST_F(Presentation, ThatIsTakenAwayWhileItAppearsLeavesNothingBehind) {
  Told *const root = shownRoot(), *const brief = named(@"brief");
  brief->whenAppearing = [^{
    [root dismissViewControllerAnimated:NO completion:nil];
  } copy];
  [root presentViewController:brief animated:NO completion:nil];
  EXPECT_EQ([root presentedViewController], nil);
  EXPECT_EQ([[brief view] window], nil);
  EXPECT_EQ([[root view] window], window);
}

TEST_F(Presentation, ThatIsTakenAwayOnceItIsThereBringsBackWhatWasBelow) {
  Told *const root = shownRoot(), *const brief = named(@"brief");
  brief->whenThere = [^{
    [root dismissViewControllerAnimated:NO completion:nil];
  } copy];
  [root presentViewController:brief animated:NO completion:nil];
  EXPECT_EQ(written, (Notes{"root willDisappear", "brief willAppear", "brief didAppear", "brief willDisappear",
                            "root willAppear", "root didAppear", "brief didDisappear"}));
  EXPECT_EQ([[root view] window], window);
}

TEST_F(Presentation, GoesAndComesWithItsWindow) {
  Told *const root = shownRoot(), *const above = named(@"above"),
              *const sheet = named(@"sheet", UIModalPresentationPageSheet);
  [root presentViewController:above animated:NO completion:nil];
  [above presentViewController:sheet animated:NO completion:nil];
  written.clear();
  [window setHidden:YES];
  EXPECT_EQ(written, (Notes{"sheet willDisappear", "above willDisappear", "sheet didDisappear", "above didDisappear"}));
  written.clear();
  [window setHidden:NO];
  EXPECT_EQ(written, (Notes{"above willAppear", "sheet willAppear", "above didAppear", "sheet didAppear"}));
  EXPECT_EQ([[window subviews] lastObject], [sheet view]);
}

TEST_F(Presentation, FromWithinANavigationControllerCoversAllOfIt) {
  Told *const top = named(@"top"), *const above = named(@"above");
  UINavigationController *const navigation =
      [[[UINavigationController alloc] initWithRootViewController:top] autorelease];
  window = shownWindow();
  [window setRootViewController:navigation];
  written.clear();
  [top presentViewController:above animated:NO completion:nil];
  EXPECT_EQ([[navigation view] window], nil);
  [top dismissViewControllerAnimated:NO completion:nil];
  EXPECT_EQ([[navigation view] window], window);
  EXPECT_EQ(written, (Notes{"top willDisappear", "above willAppear", "above didAppear", "top didDisappear",
                            "above willDisappear", "top willAppear", "top didAppear", "above didDisappear"}));
}

TEST_F(Presentation, AControllerCanBePresentedAgain) {
  Told *const root = shownRoot(), *const above = named(@"above");
  for (int time = 0; time < 2; ++time) {
    [root presentViewController:above animated:NO completion:nil];
    [root dismissViewControllerAnimated:NO completion:nil];
  }
  const Notes once{"root willDisappear",  "above willAppear", "above didAppear", "root didDisappear",
                   "above willDisappear", "root willAppear",  "root didAppear",  "above didDisappear"};
  Notes twice = once;
  twice.insert(twice.end(), once.begin(), once.end());
  EXPECT_EQ(written, twice);
}

TEST_F(Presentation, APopoverPointsAtAView) {
  Told *const root = shownRoot(), *const full = named(@"full"),
              *const popover = named(@"popover", UIModalPresentationPopover);
  EXPECT_EQ([full popoverPresentationController], nil);
  UIPopoverPresentationController *const controller = [popover popoverPresentationController];
  [controller setSourceView:[root view]];
  EXPECT_EQ([[popover popoverPresentationController] sourceView], [root view]);
  EXPECT_EQ([controller presentedViewController], popover);
  [root presentViewController:popover animated:NO completion:nil];
  EXPECT_EQ([controller presentingViewController], root);
  EXPECT_TRUE(CGRectEqualToRect([controller sourceRect], [[root view] bounds]));
}

TEST_F(Presentation, ABlurHasItsStyle) {
  UIBlurEffect *const light = [UIBlurEffect effectWithStyle:UIBlurEffectStyleLight];
  EXPECT_EQ(UIBlurEffectStyleLight, 1);
  EXPECT_TRUE([light isEqual:[UIBlurEffect effectWithStyle:UIBlurEffectStyleLight]]);
  EXPECT_FALSE([light isEqual:[UIBlurEffect effectWithStyle:UIBlurEffectStyleDark]]);
  UIVisualEffectView *const blur = [[[UIVisualEffectView alloc] initWithEffect:light] autorelease];
  [blur setFrame:CGRectMake(0, 0, 30, 40)];
  EXPECT_TRUE([[blur effect] isEqual:light]);
  EXPECT_TRUE(CGRectEqualToRect([[blur contentView] frame], CGRectMake(0, 0, 30, 40)));
}

// Left, width, right: the mask's flags 1, 2 and 4; above, height, below: 8, 16 and 32.
TEST_F(Presentation, SubviewsFollowAChangeOfSizeAsTheirMasksSay) {
  const struct {
    UIViewAutoresizing mask;
    CGRect after;
  } cases[] = {
      {0, CGRectMake(10, 20, 30, 40)},    {1, CGRectMake(110, 20, 30, 40)},           {2, CGRectMake(10, 20, 130, 40)},
      {4, CGRectMake(10, 20, 30, 40)},    {8, CGRectMake(10, 220, 30, 40)},           {16, CGRectMake(10, 20, 30, 240)},
      {18, CGRectMake(10, 20, 130, 240)}, {5, CGRectMake(24.2857142857, 20, 30, 40)}, {63, CGRectMake(20, 60, 60, 120)},
  };
  for (const auto &each : cases) {
    UIView *const outer = view(CGRectMake(0, 0, 100, 100)), *const inner = view(CGRectMake(10, 20, 30, 40), outer);
    [inner setAutoresizingMask:each.mask];
    [outer setFrame:CGRectMake(5, 5, 200, 300)];
    const CGRect after = [inner frame];
    EXPECT_NEAR(after.origin.x, each.after.origin.x, 0.001) << each.mask;
    EXPECT_NEAR(after.origin.y, each.after.origin.y, 0.001) << each.mask;
    EXPECT_NEAR(after.size.width, each.after.size.width, 0.001) << each.mask;
    EXPECT_NEAR(after.size.height, each.after.size.height, 0.001) << each.mask;
  }
}

TEST_F(Presentation, AViewThatDoesNotAutoresizeLeavesItsSubviewsAlone) {
  UIView *const outer = view(CGRectMake(0, 0, 100, 100)), *const inner = view(CGRectMake(0, 0, 100, 100), outer);
  [inner setAutoresizingMask:UIViewAutoresizingFlexibleWidth];
  EXPECT_TRUE([outer autoresizesSubviews]);
  [outer setAutoresizesSubviews:NO];
  [outer setFrame:CGRectMake(0, 0, 200, 100)];
  EXPECT_EQ([inner frame].size.width, 100);
}

TEST_F(Presentation, ANewWindowsControllerFollowsTheWindowsSize) {
  UIWindow *const shown = shownWindow();
  Told *const root = named(@"root");
  [shown setRootViewController:root];
  [shown setFrame:CGRectMake(0, 0, 100, 50)];
  EXPECT_TRUE(CGRectEqualToRect([[root view] frame], CGRectMake(0, 0, 100, 50)));
}

} // namespace
