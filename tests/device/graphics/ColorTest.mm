#import "Graphics.h"

using support::Pixel;

namespace {

class Color : public Graphics {};

UIColor *pattern() {
  return [UIColor colorWithPatternImage:support::imageOf(support::Picture(2, 1, [](size_t x, size_t) {
                    return x == 0 ? Pixel{0, 0, 255, 255} : Pixel{255, 0, 0, 255};
                  }))];
}

TEST_F(Color, ofWhiteHasTwoComponents) {
  UIColor *const color = [UIColor colorWithWhite:0.25 alpha:0.5];
  ASSERT_EQ(CGColorGetNumberOfComponents([color CGColor]), 2u);
  EXPECT_EQ(CGColorGetComponents([color CGColor])[0], 0.25);
  EXPECT_EQ(CGColorGetComponents([color CGColor])[1], 0.5);
  EXPECT_EQ(CGColorGetAlpha([color CGColor]), 0.5);
  CGFloat white = 9, alpha = 9;
  EXPECT_TRUE([color getWhite:&white alpha:&alpha]);
  EXPECT_EQ(white, 0.25);
  EXPECT_EQ(alpha, 0.5);
  CGFloat red = 9, green = 9, blue = 9;
  EXPECT_TRUE([color getRed:&red green:&green blue:&blue alpha:nullptr]);
  EXPECT_EQ(red, 0.25);
  EXPECT_EQ(green, 0.25);
  EXPECT_EQ(blue, 0.25);
}

TEST_F(Color, ofRedGreenAndBlueHasFourComponents) {
  UIColor *const color = [UIColor colorWithRed:0.5 green:0.25 blue:0.125 alpha:0.75];
  ASSERT_EQ(CGColorGetNumberOfComponents([color CGColor]), 4u);
  CGFloat red = 9, green = 9, blue = 9, alpha = 9, white = 9;
  EXPECT_TRUE([color getRed:&red green:&green blue:&blue alpha:&alpha]);
  EXPECT_EQ(red, 0.5);
  EXPECT_EQ(green, 0.25);
  EXPECT_EQ(blue, 0.125);
  EXPECT_EQ(alpha, 0.75);
  EXPECT_TRUE([color getWhite:&white alpha:nullptr]);
  EXPECT_NEAR(white, 0.2126 * 0.5 + 0.7152 * 0.25 + 0.0722 * 0.125, 1e-9);
}

TEST_F(Color, ofAPatternHasOneComponentAndNothingThatCouldBeRead) {
  CGFloat untouched = 9;
  EXPECT_EQ(CGColorGetNumberOfComponents([pattern() CGColor]), 1u);
  EXPECT_FALSE([pattern() getWhite:&untouched alpha:&untouched]);
  EXPECT_FALSE([pattern() getRed:&untouched green:&untouched blue:&untouched alpha:&untouched]);
  EXPECT_EQ(untouched, 9);
}

TEST_F(Color, ofAPatternFillsWithItSideBySide) {
  CGContextRef context = graphics::context(4, 1);
  CGContextSetFillColorWithColor(context, [pattern() CGColor]);
  CGContextFillRect(context, CGRectMake(0, 0, 3, 1));
  const support::Picture drawn = graphics::drawn(context);
  EXPECT_EQ(drawn.at(0, 0), (Pixel{0, 0, 255, 255}));
  EXPECT_EQ(drawn.at(1, 0), (Pixel{255, 0, 0, 255}));
  EXPECT_EQ(drawn.at(2, 0), (Pixel{0, 0, 255, 255}));
  EXPECT_EQ(drawn.at(3, 0), (Pixel{0, 0, 0, 0}));
}

TEST_F(Color, isEqualToOneOfTheSameComponentsAndNoOther) {
  EXPECT_TRUE([[UIColor whiteColor] isEqual:[UIColor colorWithWhite:1 alpha:1]]);
  EXPECT_TRUE([[UIColor redColor] isEqual:[UIColor colorWithRed:1 green:0 blue:0 alpha:1]]);
  EXPECT_FALSE([[UIColor redColor] isEqual:[UIColor greenColor]]);
  EXPECT_FALSE([[UIColor whiteColor] isEqual:[UIColor colorWithRed:1 green:1 blue:1 alpha:1]]);
  EXPECT_FALSE([[UIColor whiteColor] isEqual:@"white"]);
}

TEST_F(Color, withAnotherAlphaKeepsItsKind) {
  EXPECT_TRUE([[[UIColor grayColor] colorWithAlphaComponent:0.5] isEqual:[UIColor colorWithWhite:0.5 alpha:0.5]]);
  EXPECT_EQ(CGColorGetAlpha([[[UIColor blueColor] colorWithAlphaComponent:0.25] CGColor]), 0.25);
  EXPECT_EQ(CGColorGetAlpha([[pattern() colorWithAlphaComponent:0.25] CGColor]), 0.25);
}

TEST_F(Color, madeOfNothingIsNone) {
  EXPECT_EQ([UIColor colorWithCGColor:nullptr], nil);
  EXPECT_EQ([UIColor colorWithPatternImage:nil], nil);
  EXPECT_EQ(CGColorCreate(nullptr, nullptr), nullptr);
  EXPECT_EQ(CGColorCreate(graphics::rgb(), nullptr), nullptr);
  EXPECT_EQ(CGColorGetNumberOfComponents(nullptr), 0u);
  EXPECT_EQ(CGColorGetComponents(nullptr), nullptr);
  EXPECT_EQ(CGColorGetAlpha(nullptr), 0);
}

} // namespace
