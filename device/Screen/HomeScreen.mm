// The home screen: the app that runs, and the other apps of the device.
#include "Screen/Scene.h"

#import "UIKit/OtherApps.h"

#include <algorithm>
#include <array>

namespace qvdevice {

namespace {

constexpr std::array<Color, 6> kIconColors{Color{1, 0.62, 0.04},    Color{0.20, 0.78, 0.35}, Color{0, 0.48, 1},
                                           Color{0.69, 0.32, 0.87}, Color{1, 0.27, 0.23},    Color{0.35, 0.34, 0.84}};
constexpr CGFloat kIcon = 60;
constexpr NSUInteger kColumns = 4;

NSString *ownName() {
  NSBundle *const bundle = [NSBundle mainBundle];
  for (NSString *key in @[ @"CFBundleDisplayName", @"CFBundleName", @"CFBundleExecutable" ])
    if (id const name = [bundle objectForInfoDictionaryKey:key]; [name isKindOfClass:[NSString class]]) return name;
  return [[NSProcessInfo processInfo] processName];
}

void drawIcon(Scene &scene, NSString *name, CGRect rect, Color color) {
  scene.canvas.fill(rect, color, 14);
  scene.canvas.text([name length] ? [[name substringToIndex:1] uppercaseString] : @"", rect,
                    {.font = {32, Weight::kSemibold}, .color = palette::kWhite, .alignment = Alignment::kCenter});
  scene.canvas.text(name, CGRectMake(rect.origin.x - 12, CGRectGetMaxY(rect) + 3, rect.size.width + 24, 16),
                    {.font = {12, Weight::kMedium}, .color = palette::kWhite, .alignment = Alignment::kCenter});
}

} // namespace

void drawHomeScreen(Scene &scene) {
  scene.canvas.gradient(scene.bounds(), Color{0.16, 0.27, 0.52}, Color{0.45, 0.35, 0.55});
  NSMutableArray *const names = [NSMutableArray arrayWithObject:ownName()];
  for (LSApplicationProxy *app in QVDeviceAppsThatOpenDocuments())
    if (![names containsObject:[app localizedName]]) [names addObject:[app localizedName]];
  const CGFloat margin = scene.size.width * 0.07;
  const CGFloat step = (scene.size.width - 2 * margin) / kColumns;
  const NSUInteger shown = std::min([names count], 6 * kColumns);
  for (NSUInteger index = 0; index < shown; ++index) {
    const auto column = static_cast<CGFloat>(index % kColumns), row = static_cast<CGFloat>(index / kColumns);
    const CGRect rect = CGRectMake(margin + step * column + (step - kIcon) / 2, 80 + row * 96, kIcon, kIcon);
    drawIcon(scene, [names objectAtIndex:index], rect, kIconColors.at(index % kIconColors.size()));
  }
}

} // namespace qvdevice
