// Whatever the views are, there is a picture.
#include "ScreenTest.h"

#import <QuartzCore/QuartzCore.h>

#include <cmath>
#include <limits>

namespace {

const CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
const CGFloat infinite = std::numeric_limits<CGFloat>::infinity();

class HostileViews : public ScreenTest {
protected:
  void SetUp() override {
    ScreenTest::SetUp();
    window = windowOf([UIColor greenColor]);
  }
  // One of each kind, in that place.
  void fillWith(CGRect frame) {
    for (Class kind in
         @[ [UIView class], [UILabel class], [UITextField class], [UIButton class], [UIVisualEffectView class] ]) {
      UIView *const each = [[[kind alloc] initWithFrame:frame] autorelease];
      [each setBackgroundColor:[UIColor redColor]];
      [[each layer] setCornerRadius:nan];
      if ([each respondsToSelector:@selector(setText:)]) [(UILabel *)each setText:@"Text"];
      if ([each respondsToSelector:@selector(setTitle:forState:)])
        [(UIButton *)each setTitle:@"Title" forState:UIControlStateNormal];
      if ([each respondsToSelector:@selector(setEffect:)])
        [(UIVisualEffectView *)each setEffect:[UIBlurEffect effectWithStyle:UIBlurEffectStyleLight]];
      [window addSubview:each];
    }
  }
  Rgb middle() { return at(screen(), 195, 400); }

  UIWindow *window = nil;
};

TEST_F(HostileViews, WithoutANumberForAPlaceAreNotThere) {
  fillWith(CGRectMake(nan, nan, 100, 100));
  fillWith(CGRectMake(0, 0, nan, 100));
  fillWith(CGRectMake(infinite, 0, 100, 100));
  fillWith(CGRectMake(0, -infinite, 100, infinite));
  EXPECT_EQ(middle(), kGreen);
}

TEST_F(HostileViews, OfNegativeOrNoSizeAreNotThere) {
  fillWith(CGRectMake(390, 844, -390, -844));
  fillWith(CGRectMake(100, 100, 0, 500));
  EXPECT_EQ(middle(), kGreen);
}

TEST_F(HostileViews, ThatAreHugeCoverTheScreen) {
  UIView *const huge = view<UIView>(CGRectMake(-90000, -90000, 1e300, infinite), window);
  [huge setBackgroundColor:[UIColor redColor]];
  EXPECT_EQ(middle(), kRed);
}

TEST_F(HostileViews, ThatAreFarAwayAreNotThere) {
  fillWith(CGRectMake(1e12, 0, 1e300, 1e300));
  fillWith(CGRectMake(-1e300, -1e300, 1e300, 1e300));
  EXPECT_EQ(middle(), kGreen);
}

TEST_F(HostileViews, OfImpossibleFaintnessAreNotThere) {
  for (const CGFloat alpha : {nan, -1.0}) {
    UIView *const each = view<UIView>([window bounds], window);
    [each setBackgroundColor:[UIColor redColor]];
    [each setAlpha:alpha];
  }
  EXPECT_EQ(middle(), kGreen);
  UIView *const dense = view<UIView>([window bounds], window);
  [dense setBackgroundColor:[UIColor redColor]];
  [dense setAlpha:infinite];
  EXPECT_EQ(middle(), kRed);
}

TEST_F(HostileViews, WithHugeCornersAreRound) {
  UIView *const each = view<UIView>(CGRectMake(95, 300, 200, 200), window);
  [each setBackgroundColor:[UIColor redColor]];
  [[each layer] setCornerRadius:1e300];
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 195, 400), kRed);
  EXPECT_EQ(at(picture, 97, 302), kGreen);
}

TEST_F(HostileViews, WithAnyFontHaveAText) {
  for (const CGFloat size : {nan, -3.0, 1e-300, 1e300, infinite}) {
    UILabel *const words = label(@"Text", CGRectMake(0, 200, 390, 100), window);
    [words setFont:[UIFont systemFontOfSize:size]];
  }
  EXPECT_EQ(middle(), kGreen);
}

TEST_F(HostileViews, WithALongTextAreDrawnSoon) {
  NSString *const much = [@"" stringByPaddingToLength:1000000 withString:@"many words " startingAtIndex:0];
  UILabel *const words = label(much, CGRectMake(0, 100, 12, 700), window);
  [words setNumberOfLines:0];
  [label(much, CGRectMake(50, 100, 300, 700), window) setNumberOfLines:0];
  EXPECT_GT(marks(screen(), CGRectMake(50, 100, 300, 700), kGreen), 1000);
}

TEST_F(HostileViews, OfManyThousandsAreAllDrawn) {
  for (int i = 0; i < 5000; ++i)
    fillWith(CGRectMake(i % 10, 100 + i % 100, 5, 5));
  EXPECT_EQ(middle(), kGreen);
  EXPECT_FALSE(at(screen(), 5, 110) == kGreen);
}

TEST_F(HostileViews, ThatLieDeepInEachOtherAreDrawnToADepth) {
  UIView *above = window;
  for (int i = 0; i < 3000; ++i) {
    above = view<UIView>(CGRectMake(0, 0, 390, 844), above);
    if (i == 400) [above setBackgroundColor:[UIColor redColor]];
  }
  [above setBackgroundColor:[UIColor blueColor]];
  EXPECT_EQ(middle(), kRed);
}

TEST_F(HostileViews, InAWindowWithoutASizeAreDrawn) {
  [window setFrame:CGRectZero];
  UIView *const each = view<UIView>(CGRectMake(100, 300, 200, 200), window);
  [each setBackgroundColor:[UIColor redColor]];
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 195, 400), kRed) << "nothing clips it";
  EXPECT_EQ(at(picture, 50, 400), kWhite);
}

} // namespace
