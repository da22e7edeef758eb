// A blur, by whoever in the process can make one.
#include "ScreenTest.h"

#import "UIKit/UIRemoteViewController.h"

#include <objc/runtime.h>

namespace {

CGSize seen;
std::string effect;

UIImage *blueOf(NSString *name, UIImage *image) {
  effect = [name UTF8String];
  seen = [image size];
  const Picture picture = support::pictureOf(image);
  effect += at(picture, 10, 10) == kRed ? " of red" : " of something else";
  return support::imageOf(
      Picture(picture.width, picture.height, [](size_t, size_t) { return support::Pixel{255, 0, 0, 255}; }));
}

UIImage *light(id, SEL, UIImage *image) { return blueOf(@"light", image); }
UIImage *dark(id, SEL, UIImage *image) { return blueOf(@"dark", image); }

class ScreenEffect : public ScreenTest {
protected:
  void SetUp() override {
    ScreenTest::SetUp();
    window = windowOf([UIColor redColor]);
  }
  // Into the process, as a library brings it.
  static void addEffects() {
    Class const effects = objc_allocateClassPair([NSObject class], "UIImageEffects", 0);
    objc_registerClassPair(effects);
    Class const meta = object_getClass(effects);
    class_addMethod(meta, sel_registerName("imageByApplyingLightEffectToImage:"), (IMP)light, "@24@0:8@16");
    class_addMethod(meta, sel_registerName("imageByApplyingDarkEffectToImage:"), (IMP)dark, "@24@0:8@16");
  }
  void blur(UIBlurEffectStyle style, CGRect where) {
    UIVisualEffectView *const made =
        [[[UIVisualEffectView alloc] initWithEffect:[UIBlurEffect effectWithStyle:style]] autorelease];
    [made setFrame:where];
    [window addSubview:made];
  }
  const CGRect place = CGRectMake(100, 300, 200, 100);
  UIWindow *window = nil;
};

TEST_F(ScreenEffect, IsATintWithoutSomebodyWhoBlurs) {
  blur(UIBlurEffectStyleLight, place);
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 200, 350), (Rgb{249, 210, 210}));
  EXPECT_EQ(at(picture, 99, 350), kRed);
}

TEST_F(ScreenEffect, TakesWhatLiesBehindAndIsLaidOverIt) {
  addEffects();
  blur(UIBlurEffectStyleLight, place);
  const Picture picture = screen();
  EXPECT_EQ(effect, "light of red");
  EXPECT_EQ(seen.width, 200);
  EXPECT_EQ(seen.height, 100);
  EXPECT_EQ(at(picture, 200, 350), kBlue);
  EXPECT_EQ(at(picture, 100, 300), kBlue);
  EXPECT_EQ(at(picture, 99, 299), kRed);
  EXPECT_EQ(at(picture, 299, 399), kBlue);
  EXPECT_EQ(at(picture, 300, 400), kRed);
}

TEST_F(ScreenEffect, IsTheOneOfTheStyle) {
  addEffects();
  blur(UIBlurEffectStyleDark, place);
  screen();
  EXPECT_EQ(effect, "dark of red");
}

TEST_F(ScreenEffect, ThatNobodyKnowsIsATint) {
  addEffects();
  blur(UIBlurEffectStyleExtraLight, place);
  EXPECT_EQ(at(screen(), 200, 350), (Rgb{249, 210, 210}));
  EXPECT_EQ(effect, "");
}

TEST_F(ScreenEffect, BeyondTheScreenTakesWhatIsThere) {
  addEffects();
  blur(UIBlurEffectStyleLight, CGRectMake(-50, -50, 490, 944));
  EXPECT_EQ(at(screen(), 195, 400), kBlue);
}

TEST_F(ScreenEffect, IsNoneWithoutOne) {
  UIVisualEffectView *const made = [[[UIVisualEffectView alloc] initWithEffect:nil] autorelease];
  [made setFrame:place];
  [window addSubview:made];
  EXPECT_EQ(at(screen(), 200, 350), kRed);
}

class RemoteView : public ScreenEffect {
protected:
  void SetUp() override {
    ScreenEffect::SetUp();
    [window setRootViewController:[[[_UIRemoteViewController alloc] initWithRequest:nil] autorelease]];
  }
};

TEST_F(RemoteView, ShowsWhatTheExtensionDrew) {
  const Picture half(
      390, 844, [](size_t x, size_t) { return x < 195 ? support::Pixel{255, 0, 0, 255} : support::Pixel{0, 0, 0, 0}; });
  const Picture picture = screen(support::imageOf(half));
  EXPECT_EQ(at(picture, 100, 400), kBlue);
  EXPECT_EQ(at(picture, 300, 400), kRed) << "where it is clear";
}

TEST_F(RemoteView, KeepsTheShapeOfWhatIsOfAnother) {
  const Picture wide(844, 390, [](size_t, size_t) { return support::Pixel{255, 0, 0, 255}; });
  const Picture picture = screen(support::imageOf(wide));
  EXPECT_EQ(at(picture, 195, 422), kBlue);
  EXPECT_EQ(at(picture, 195, 300), kRed);
}

TEST_F(RemoteView, IsGreyWithoutAPicture) {
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 195, 385), (Rgb{143, 143, 148}));
  EXPECT_EQ(at(picture, 195, 300), kRed);
}

} // namespace
