#include "ScreenTest.h"

#include "Screen/Characters.h"

// Half a character between two whole ones, which other strings do not let in.
@interface HalfString : NSString
@end

@implementation HalfString
- (NSUInteger)length {
  return 3;
}
- (unichar)characterAtIndex:(NSUInteger)index {
  const unichar all[] = {'a', 0xd83d, 'b'};
  return all[index];
}
@end

namespace {

class ScreenText : public ScreenTest {
protected:
  void SetUp() override {
    ScreenTest::SetUp();
    window = windowOf([UIColor whiteColor]);
  }
  // Whether something is written in the left half of the frame, and in its right half.
  std::string halves() {
    const Picture picture = screen();
    const CGFloat width = frame.size.width / 2;
    const int left = marks(picture, CGRectMake(frame.origin.x, frame.origin.y, width, frame.size.height));
    const int right = marks(picture, CGRectMake(frame.origin.x + width, frame.origin.y, width, frame.size.height));
    return std::string(left ? "left " : "") + (right ? "right" : "");
  }

  UIWindow *window = nil;
  const CGRect frame = CGRectMake(50, 300, 200, 40);
  const CGRect around = CGRectMake(0, 100, 390, 500);
};

TEST_F(ScreenText, StandsInItsFrame) {
  label(@"Notes", frame, window);
  const Picture picture = screen();
  EXPECT_GT(marks(picture, frame), 50);
  EXPECT_EQ(marks(picture, around), marks(picture, frame)) << "nothing outside";
}

TEST_F(ScreenText, ThatIsTooLongStaysInItsFrameAndEndsWithAnEllipsis) {
  label(@"This is much more than there is room for in two hundred points", frame, window);
  const Picture picture = screen();
  EXPECT_EQ(marks(picture, around), marks(picture, frame));
  // What ends before the frame does ends with three dots: low, and apart from each other.
  EXPECT_GT(marks(picture, CGRectMake(190, 322, 60, 8)), 3);
}

TEST_F(ScreenText, StandsLeftRightOrInTheMiddle) {
  UILabel *const words = label(@"Ann", frame, window);
  EXPECT_EQ(halves(), "left ");
  [words setTextAlignment:NSTextAlignmentRight];
  EXPECT_EQ(halves(), "right");
  [words setTextAlignment:NSTextAlignmentCenter];
  EXPECT_EQ(halves(), "left right");
}

TEST_F(ScreenText, HasAColourAndASize) {
  UILabel *const words = label(@"MMMMMM", frame, window);
  const int small = marks(screen(), frame);
  [words setFont:[UIFont boldSystemFontOfSize:30]];
  [words setTextColor:[UIColor redColor]];
  const Picture picture = screen();
  EXPECT_GT(marks(picture, frame), 2 * small);
  bool isRed = false;
  for (size_t x = 50; x < 250; ++x)
    isRed = isRed || at(picture, x, 320) == kRed;
  EXPECT_TRUE(isRed);
}

TEST_F(ScreenText, BreaksIntoAsManyLinesAsItMayHave) {
  const CGRect tall = CGRectMake(50, 300, 100, 120);
  UILabel *const words = label(@"one two three four five six seven", tall, window);
  const CGRect third = CGRectMake(50, 375, 100, 45);
  EXPECT_EQ(marks(screen(), third), 0) << "a single line stands in the middle";
  [words setNumberOfLines:0];
  EXPECT_GT(marks(screen(), third), 0);
  [words setNumberOfLines:2];
  EXPECT_EQ(marks(screen(), CGRectMake(50, 390, 100, 30)), 0);
}

TEST_F(ScreenText, OfAnyKindIsDrawn) {
  UILabel *const words = label(@"", frame, window);
  EXPECT_EQ(marks(screen(), frame), 0);
  for (NSString *each in @[ @"Ω Ж é", @"\xF0\x9F\x98\x80", @"漢字", @"שלום", @"a\tb\x01\x7f" ]) {
    [words setText:each];
    EXPECT_GT(marks(screen(), frame), 0) << [each characterAtIndex:0];
  }
  for (NSString *each in @[ @"\n\n\n", @"   ", @"\x01\x02", @"\u200b" ]) {
    [words setText:each];
    EXPECT_EQ(marks(screen(), frame), 0) << [each length];
  }
}

TEST_F(ScreenText, WithHalfACharacterHasOneThatNobodyKnows) {
  EXPECT_EQ(qvdevice::charactersOf([[[HalfString alloc] init] autorelease]), U"a\uFFFDb");
}

TEST_F(ScreenText, IsReadByCharactersUpToALimit) {
  EXPECT_EQ(qvdevice::charactersOf(@"a\xF0\x9F\x98\x80\nb"), U"a\U0001F600\nb");
  EXPECT_EQ(qvdevice::charactersOf(@"\xF0\x9F\x98\x80 and more", 2), U"\U0001F600 ");
  EXPECT_EQ(qvdevice::charactersOf(nil), U"");
}

TEST_F(ScreenText, OfAButtonIsFainterWhenItIsDisabled) {
  UIButton *const button = [UIButton buttonWithType:UIButtonTypeSystem];
  [button setFrame:frame];
  [button setTitle:@"IIIIIIIIII" forState:UIControlStateNormal];
  [window addSubview:button];
  const auto darkest = [this] {
    const Picture picture = screen();
    int red = 255;
    for (size_t x = 50; x < 250; ++x)
      red = std::min(red, at(picture, x, 320).red);
    return red;
  };
  EXPECT_LT(darkest(), 60) << "blue";
  [button setEnabled:NO];
  EXPECT_GT(darkest(), 150);
}

TEST_F(ScreenText, ThatIsSecretIsDotsOnly) {
  UITextField *const field = view<UITextField>(frame, window);
  [field setSecureTextEntry:YES];
  const Picture empty = screen();
  [field setText:@"aaaa"];
  const Picture one = screen();
  [field setText:@"WWWW"];
  EXPECT_EQ(screen(), one);
  EXPECT_FALSE(one == empty);
  [field setSecureTextEntry:NO];
  EXPECT_FALSE(screen() == one);
}

TEST_F(ScreenText, ThatIsMissingLeavesThePlaceholder) {
  UITextField *const field = view<UITextField>(frame, window);
  const int border = marks(screen(), frame);
  [field setPlaceholder:@"Title"];
  const int faint = marks(screen(), frame);
  EXPECT_GT(faint, border);
  [field setText:@"X"];
  EXPECT_LT(marks(screen(), frame), faint);
}

} // namespace
