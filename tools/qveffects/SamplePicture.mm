#import "SamplePicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {

constexpr size_t kWidth = 600;
constexpr size_t kHeight = 450;

/// Red, green, blue, 0 to 1.
using Colour = std::array<double, 3>;

Colour mix(const Colour &from, const Colour &to, double share) {
  const double part = std::clamp(share, 0.0, 1.0);
  Colour mixed{};
  for (size_t index = 0; index < mixed.size(); ++index) {
    mixed[index] = from[index] + (to[index] - from[index]) * part;
  }
  return mixed;
}

/// 1 inside, 0 outside, and in between over the width of one pixel.
double inside(double distanceToEdge) { return std::clamp(distanceToEdge + 0.5, 0.0, 1.0); }

Colour colourAt(double x, double y) {
  Colour colour = mix({0.16, 0.38, 0.78}, {0.98, 0.80, 0.58}, y / 290);               // sky
  colour = mix(colour, {1.0, 0.95, 0.70}, inside(46 - std::hypot(x - 440, y - 105))); // sun
  const double far = 235 + 34 * std::sin(x / 82) + 12 * std::sin(x / 27 + 1);
  colour = mix(colour, {0.36, 0.46, 0.62}, inside(y - far));
  const double near = 300 + 22 * std::sin(x / 120 + 2) + 7 * std::sin(x / 19);
  colour = mix(colour, mix({0.20, 0.52, 0.24}, {0.08, 0.28, 0.14}, (y - near) / 110), inside(y - near));
  constexpr std::array<Colour, 6> kFull{{{0.90, 0.12, 0.16},
                                         {0.98, 0.60, 0.05},
                                         {0.97, 0.90, 0.10},
                                         {0.10, 0.70, 0.30},
                                         {0.10, 0.40, 0.95},
                                         {0.60, 0.15, 0.75}}};
  for (size_t index = 0; index < kFull.size(); ++index) {
    const double middle = 55 + 98 * static_cast<double>(index);
    colour = mix(colour, kFull[index], inside(36 - std::hypot(x - middle, y - 388)));
  }
  // A sign with hard edges and lines of one, two and three pixels.
  if (x >= 60 && x < 210 && y >= 60 && y < 170) {
    colour = {0.97, 0.97, 0.95};
    const int line = static_cast<int>(x) - 70;
    const int thickness = line < 45 ? 1 : line < 90 ? 2 : 3;
    if (line >= 0 && line < 130 && y >= 70 && y < 110 && line / thickness % 2 == 0) colour = {0.05, 0.05, 0.08};
    if (y >= 120 && y < 160 && line >= 0 && line < 130 && (line / 10 + (static_cast<int>(y) - 120) / 10) % 2 == 0) {
      colour = {0.05, 0.05, 0.08};
    }
  }
  return colour;
}

} // namespace

UIImage *samplePicture() {
  NSMutableData *const data = [NSMutableData dataWithLength:kWidth * kHeight * 4];
  auto *to = static_cast<std::uint8_t *>([data mutableBytes]);
  for (size_t y = 0; y < kHeight; ++y) {
    for (size_t x = 0; x < kWidth; ++x) {
      for (const double part : colourAt(static_cast<double>(x) + 0.5, static_cast<double>(y) + 0.5)) {
        *to++ = static_cast<std::uint8_t>(std::lround(part * 255));
      }
      *to++ = 255;
    }
  }
  CGDataProviderRef provider = CGDataProviderCreateWithCFData((CFDataRef)data);
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGImageRef bitmap = CGImageCreate(kWidth, kHeight, 8, 32, kWidth * 4, space, kCGImageAlphaNoneSkipLast, provider,
                                    nullptr, true, kCGRenderingIntentDefault);
  UIImage *const image = [UIImage imageWithCGImage:bitmap];
  CGImageRelease(bitmap);
  CGColorSpaceRelease(space);
  CGDataProviderRelease(provider);
  return image;
}
