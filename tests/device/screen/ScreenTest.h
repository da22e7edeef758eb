// Pictures of the screen, looked at pixel by pixel: one to a point.
#pragma once

#include "UIKitTest.h"

#import "UIKit/Lifecycle.h"

#include "Screen/Picture.h"
#include "support/Pictures.h"

#include <algorithm>
#include <cstdlib>

class ScreenTest : public UIKitTest {
protected:
  void SetUp() override {
    UIKitTest::SetUp();
    [application qvdevice_setState:UIApplicationStateActive];
  }

  // What is on the screen now.
  support::Picture screen(UIImage *extension = nil) {
    NSString *problem = nil;
    UIImage *const image = QVDeviceDrawScreen(application, extension, 1, &problem);
    EXPECT_EQ(text(problem), "nil");
    return support::pictureOf(image);
  }

  UIWindow *windowOf(UIColor *color, UIWindowLevel level = UIWindowLevelNormal) {
    UIWindow *const window = shownWindow();
    [window setBackgroundColor:color];
    [window setWindowLevel:level];
    return window;
  }
  UILabel *label(NSString *words, CGRect frame, UIView *above) {
    UILabel *const made = view<UILabel>(frame, above);
    [made setText:words];
    return made;
  }
};

using support::Picture;

struct Rgb {
  int red, green, blue;
};

inline const Rgb kRed{255, 0, 0}, kGreen{0, 255, 0}, kBlue{0, 0, 255}, kWhite{255, 255, 255};

inline std::ostream &operator<<(std::ostream &out, Rgb color) {
  return out << color.red << "," << color.green << "," << color.blue;
}

// Rounding may be off by one, twice.
inline bool operator==(Rgb left, Rgb right) {
  return std::abs(left.red - right.red) <= 2 && std::abs(left.green - right.green) <= 2 &&
         std::abs(left.blue - right.blue) <= 2;
}

inline Rgb at(const Picture &picture, size_t x, size_t y) {
  const support::Pixel &pixel = picture.at(x, y);
  return {pixel[2], pixel[1], pixel[0]};
}

// How many pixels of a rectangle are not of that colour.
inline int marks(const Picture &picture, CGRect rect, Rgb paper = kWhite) {
  int count = 0;
  for (auto y = static_cast<size_t>(rect.origin.y); y < static_cast<size_t>(CGRectGetMaxY(rect)); ++y)
    for (auto x = static_cast<size_t>(rect.origin.x); x < static_cast<size_t>(CGRectGetMaxX(rect)); ++x)
      count += at(picture, x, y) == paper ? 0 : 1;
  return count;
}
