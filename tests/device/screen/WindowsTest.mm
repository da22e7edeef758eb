#include "ScreenTest.h"

#import <QuartzCore/QuartzCore.h>

namespace {

class ScreenWindows : public ScreenTest {};

TEST_F(ScreenWindows, AreNoneOnAScreenOfAnAppWithoutThem) {
  const Picture picture = screen();
  EXPECT_EQ(picture.width, 390u);
  EXPECT_EQ(picture.height, 844u);
  EXPECT_EQ(at(picture, 195, 400), kWhite);
  EXPECT_GT(marks(picture, CGRectMake(0, 0, 390, 47)), 100) << "the time, and how the device is";
}

TEST_F(ScreenWindows, OfAHigherLevelCoverThoseOfALowerOne) {
  windowOf([UIColor greenColor], 10);
  windowOf([UIColor redColor]);
  EXPECT_EQ(at(screen(), 195, 400), kGreen);
}

TEST_F(ScreenWindows, OfOneLevelAreCoveredByTheOneThatCameLast) {
  UIWindow *const first = windowOf([UIColor greenColor]);
  windowOf([UIColor redColor]);
  EXPECT_EQ(at(screen(), 195, 400), kRed);
  [first makeKeyAndVisible];
  EXPECT_EQ(at(screen(), 195, 400), kGreen);
}

TEST_F(ScreenWindows, ThatAreHiddenAreNotThere) {
  windowOf([UIColor greenColor]);
  UIWindow *const above = windowOf([UIColor redColor], 10);
  EXPECT_EQ(at(screen(), 195, 400), kRed);
  [above setHidden:YES];
  EXPECT_EQ(at(screen(), 195, 400), kGreen);
}

TEST_F(ScreenWindows, WithoutABackgroundLetThroughWhatIsBehind) {
  windowOf([UIColor greenColor]);
  windowOf(nil, 10);
  EXPECT_EQ(at(screen(), 195, 400), kGreen);
}

TEST_F(ScreenWindows, ThatAreSmallerCoverTheirPlaceOnly) {
  windowOf([UIColor greenColor]);
  [windowOf([UIColor redColor], 10) setFrame:CGRectMake(100, 200, 50, 60)];
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 100, 200), kRed);
  EXPECT_EQ(at(picture, 149, 259), kRed);
  EXPECT_EQ(at(picture, 99, 200), kGreen);
  EXPECT_EQ(at(picture, 150, 259), kGreen);
  EXPECT_EQ(at(picture, 149, 260), kGreen);
}

class ScreenViews : public ScreenTest {
protected:
  UIView *colored(UIColor *color, CGRect frame, UIView *above) {
    UIView *const made = view<UIView>(frame, above);
    [made setBackgroundColor:color];
    return made;
  }
};

TEST_F(ScreenViews, LieInTheirSuperviewsFrontmostLast) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  UIView *const below = colored([UIColor redColor], CGRectMake(50, 100, 100, 100), window);
  colored([UIColor greenColor], CGRectMake(10, 10, 20, 20), below);
  colored([UIColor blueColor], CGRectMake(60, 110, 10, 10), window);
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 55, 105), kRed);
  EXPECT_EQ(at(picture, 65, 115), kBlue);
  EXPECT_EQ(at(picture, 75, 125), kGreen);
}

TEST_F(ScreenViews, MoveWithTheOriginOfBounds) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  UIView *const scrolled = colored([UIColor redColor], CGRectMake(50, 100, 100, 100), window);
  colored([UIColor greenColor], CGRectMake(40, 40, 10, 10), scrolled);
  [scrolled setBounds:CGRectMake(30, 20, 100, 100)];
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 65, 125), kGreen);
  EXPECT_EQ(at(picture, 50, 100), kRed);
  EXPECT_EQ(at(picture, 95, 145), kRed);
}

TEST_F(ScreenViews, ThatAreHiddenOrClearAreNotThereNorWhatIsInThem) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  UIView *const hidden = colored([UIColor redColor], CGRectMake(50, 100, 50, 50), window);
  colored([UIColor greenColor], CGRectMake(0, 0, 20, 20), hidden);
  [hidden setHidden:YES];
  UIView *const clear = colored([UIColor redColor], CGRectMake(150, 100, 50, 50), window);
  [clear setAlpha:0];
  EXPECT_EQ(marks(screen(), CGRectMake(40, 90, 200, 100)), 0);
}

TEST_F(ScreenViews, FadeTogetherWithWhatIsInThem) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  UIView *const faint = colored([UIColor redColor], CGRectMake(50, 100, 100, 100), window);
  colored([UIColor blueColor], CGRectMake(0, 0, 50, 100), faint);
  [faint setAlpha:0.5];
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 75, 150), (Rgb{128, 128, 255})) << "nothing of the red below the blue";
  EXPECT_EQ(at(picture, 125, 150), (Rgb{255, 128, 128}));
}

TEST_F(ScreenViews, FadeInAnyDepth) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  UIView *above = window;
  for (int depth = 0; depth < 6; ++depth) {
    above = view<UIView>(CGRectMake(0, 0, 390, 844), above);
    [above setAlpha:0.8];
  }
  colored([UIColor blackColor], CGRectMake(50, 100, 100, 100), above);
  // 0.8 to the sixth is 0.262.
  EXPECT_EQ(at(screen(), 75, 150), (Rgb{188, 188, 188}));
}

TEST_F(ScreenViews, HaveRoundCorners) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  [[colored([UIColor redColor], CGRectMake(50, 100, 100, 100), window) layer] setCornerRadius:20];
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 51, 101), kWhite);
  EXPECT_EQ(at(picture, 148, 198), kWhite);
  EXPECT_EQ(at(picture, 100, 101), kRed);
  EXPECT_EQ(at(picture, 58, 108), kRed);
}

TEST_F(ScreenViews, HavePatternsForBackgrounds) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  const Picture tile(2, 2, [](size_t x, size_t) -> support::Pixel {
    return x == 0 ? support::Pixel{255, 0, 0, 255} : support::Pixel{0, 0, 255, 255};
  });
  colored([UIColor colorWithPatternImage:support::imageOf(tile)], CGRectMake(50, 100, 100, 100), window);
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 60, 150), kBlue);
  EXPECT_EQ(at(picture, 61, 150), kRed);
}

TEST_F(ScreenViews, AreLaidOutBefore) {
  UIWindow *const window = windowOf([UIColor whiteColor]);
  UIButton *const button = view<UIButton>(CGRectMake(100, 300, 20, 20), window);
  [button setTitle:@"Wide title" forState:UIControlStateNormal];
  [button setFrame:CGRectMake(100, 300, 200, 40)];
  EXPECT_GT(marks(screen(), CGRectMake(130, 300, 140, 40)), 50);
  EXPECT_EQ([[button titleLabel] frame].size.width, 200);
}

} // namespace
