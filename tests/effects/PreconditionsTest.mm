// What no effect can be applied to: a line in the platform's log, and nil.
#import "Effects.h"

#include <cmath>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class EffectsPreconditions : public Effects {};

UIImage *picture() { return support::imageOf(support::noise(10, 10, true)); }

TEST_F(EffectsPreconditions, refuseAnImageWithoutWidth) {
  UIImage *const image = [QVSizedImage imageWithSize:CGSizeMake(0, 10)];
  EXPECT_EQ(blurred(image, 10, nil, 1.8), nil);
  EXPECT_THAT(log(),
              ElementsAre("*** error: invalid size: (0.00 x 10.00). Both dimensions must be >= 1: " + shown(image)));
}

TEST_F(EffectsPreconditions, refuseAnImageWithoutHeightOrOfHalfAPointOrOfNoNumber) {
  const std::string rest = ". Both dimensions must be >= 1: ";
  UIImage *const low = [QVSizedImage imageWithSize:CGSizeMake(10, 0.994)];
  EXPECT_EQ(blurred(low, 10, nil, 1.8), nil);
  UIImage *const none = [QVSizedImage imageWithSize:CGSizeMake(10, NAN)];
  EXPECT_EQ(blurred(none, 10, nil, 1.8), nil);
  UIImage *const half = support::imageOf(support::noise(1, 2, true), 2);
  EXPECT_EQ(blurred(half, 10, nil, 1.8), nil);
  EXPECT_THAT(log(), ElementsAre("*** error: invalid size: (10.00 x 0.99)" + rest + shown(low),
                                 "*** error: invalid size: (10.00 x nan)" + rest + shown(none),
                                 "*** error: invalid size: (0.50 x 1.00)" + rest + shown(half)));
}

TEST_F(EffectsPreconditions, refuseNil) {
  EXPECT_EQ(blurred(nil, 10, nil, 1.8), nil);
  EXPECT_THAT(log(), ElementsAre("*** error: invalid size: (0.00 x 0.00). Both dimensions must be >= 1: (null)"));
}

TEST_F(EffectsPreconditions, refuseAnImageWithoutABitmap) {
  UIImage *const image = [QVSizedImage imageWithSize:CGSizeMake(10, 10)];
  EXPECT_EQ(blurred(image, 10, nil, 1.8), nil);
  EXPECT_THAT(log(), ElementsAre("*** error: inputImage must be backed by a CGImage: " + shown(image)));
}

TEST_F(EffectsPreconditions, refuseAMaskWithoutABitmap) {
  UIImage *const mask = [QVSizedImage imageWithSize:CGSizeMake(10, 10)];
  EXPECT_EQ(blurred(picture(), 10, nil, 1.8, mask), nil);
  EXPECT_THAT(log(), ElementsAre("*** error: effectMaskImage must be backed by a CGImage: " + shown(mask)));
}

TEST_F(EffectsPreconditions, complainOfOneThingOnlyTheSizeFirstAndTheMaskLast) {
  UIImage *const empty = [QVSizedImage imageWithSize:CGSizeMake(0, 0)];
  UIImage *const bare = [QVSizedImage imageWithSize:CGSizeMake(1, 1)];
  EXPECT_EQ(blurred(empty, 10, nil, 1.8, empty), nil);
  EXPECT_EQ(blurred(bare, 10, nil, 1.8, empty), nil);
  ASSERT_EQ(log().size(), 2u);
  EXPECT_TRUE(log()[0].starts_with("*** error: invalid size: "));
  EXPECT_TRUE(log()[1].starts_with("*** error: inputImage "));
}

TEST_F(EffectsPreconditions, holdForEveryLook) {
  EXPECT_EQ([effects() imageByApplyingLightEffectToImage:nil], nil);
  EXPECT_EQ([effects() imageByApplyingExtraLightEffectToImage:nil], nil);
  EXPECT_EQ([effects() imageByApplyingDarkEffectToImage:nil], nil);
  EXPECT_EQ([effects() imageByApplyingTintEffectWithColor:nil toImage:nil], nil);
  EXPECT_EQ(log().size(), 4u);
}

TEST_F(EffectsPreconditions, letAnImageOfOnePixelPass) {
  const support::Picture one(1, 1, [](size_t, size_t) { return support::Pixel{10, 200, 30, 255}; });
  EXPECT_EQ(support::pictureOf(blurred(support::imageOf(one, 1, true), 10, nil, 1)), one);
  EXPECT_NE(blurred(support::imageOf(one), 10, [UIColor redColor], 1.8, support::imageOf(one)), nil);
  EXPECT_THAT(log(), IsEmpty());
}

} // namespace
