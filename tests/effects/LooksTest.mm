// The four ready-made looks: which radius, factor and colour they stand for.
#import "Effects.h"
#import "VImageCalls.h"

using support::Picture;
using support::Pixel;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class EffectsLooks : public Effects {
protected:
  static UIImage *picture() { return support::imageOf(support::noise(31, 23, true), 1, true); }

  static void expectSame(UIImage *look, UIImage *expected) {
    ASSERT_NE(look, nil);
    EXPECT_EQ(support::pictureOf(look), support::pictureOf(expected));
  }
};

UIColor *white(CGFloat value, CGFloat alpha) { return [UIColor colorWithWhite:value alpha:alpha]; }

TEST_F(EffectsLooks, lightBlurs60PointsUnderWhite) {
  VImageCalls &calls = takeNotes();
  UIImage *const look = [effects() imageByApplyingLightEffectToImage:picture()];
  EXPECT_THAT(calls.calls, Contains("BoxConvolve A>B+ 57x57 flags 8"));
  EXPECT_EQ(calls.matrix.at(0), 446);
  expectSame(look, blurred(picture(), 60, white(1, 0.3), 1.8));
}

TEST_F(EffectsLooks, extraLightBlurs40PointsUnderAlmostWhite) {
  VImageCalls &calls = takeNotes();
  UIImage *const look = [effects() imageByApplyingExtraLightEffectToImage:picture()];
  EXPECT_THAT(calls.calls, Contains("BoxConvolve A>B+ 37x37 flags 8"));
  expectSame(look, blurred(picture(), 40, white(0.97, 0.82), 1.8));
}

TEST_F(EffectsLooks, darkBlurs40PointsUnderAlmostBlack) {
  VImageCalls &calls = takeNotes();
  UIImage *const look = [effects() imageByApplyingDarkEffectToImage:picture()];
  EXPECT_THAT(calls.calls, Contains("BoxConvolve A>B+ 37x37 flags 8"));
  expectSame(look, blurred(picture(), 40, white(0.11, 0.73), 1.8));
}

TEST_F(EffectsLooks, tintBlurs20PointsTurnsColoursRoundAndLaysTheColourOverIt) {
  VImageCalls &calls = takeNotes();
  UIColor *const color = [UIColor colorWithRed:0.1 green:0.4 blue:0.9 alpha:1];
  UIImage *const look = [effects() imageByApplyingTintEffectWithColor:color toImage:picture()];
  EXPECT_THAT(calls.calls, Contains("BoxConvolve A>B+ 19x19 flags 8"));
  EXPECT_EQ(calls.matrix.at(0), -219); // -1 is a change of saturation
  expectSame(look, blurred(picture(), 20, [UIColor colorWithRed:0.1 green:0.4 blue:0.9 alpha:0.6], -1));
}

TEST_F(EffectsLooks, tintTakesTheWhiteOfAColourOfTwoComponentsWhateverItsAlpha) {
  expectSame([effects() imageByApplyingTintEffectWithColor:white(0.75, 0.1) toImage:picture()],
             blurred(picture(), 20, white(0.75, 0.6), -1));
}

TEST_F(EffectsLooks, tintTakesTheColourAsItIsWhenItsComponentsCannotBeRead) {
  UIColor *const pattern = [UIColor
      colorWithPatternImage:support::imageOf(Picture(1, 1, [](size_t, size_t) { return Pixel{9, 8, 7, 255}; }))];
  UIImage *const look = [effects() imageByApplyingTintEffectWithColor:pattern toImage:picture()];
  EXPECT_EQ(support::pictureOf(look).at(3, 3), (Pixel{9, 8, 7, 255})); // opaque: nothing shines through
}

TEST_F(EffectsLooks, tintOfNoColourLaysNothingOverTheImage) {
  expectSame([effects() imageByApplyingTintEffectWithColor:nil toImage:picture()], blurred(picture(), 20, nil, -1));
  EXPECT_THAT(log(), IsEmpty());
}

} // namespace
