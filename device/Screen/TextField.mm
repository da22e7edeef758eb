#include "Screen/Scene.h"
#include "Screen/Selection.h"

#import "UIKit/TextFieldSelection.h"

#include <algorithm>

namespace qvdevice {

namespace {

constexpr CGFloat kRadius = 8;
constexpr CGFloat kMargin = 10;
constexpr Font kFont{17};

NSString *shownText(UITextField *field) {
  NSString *const text = [field text];
  return [field isSecureTextEntry] ? [@"" stringByPaddingToLength:std::min([text length], NSUInteger { 64 })
                                                       withString:@"•"
                                                  startingAtIndex:0]
                                   : text;
}

} // namespace

CGRect placeOfSelection(UITextField *field) {
  const CGRect room = CGRectInset([field bounds], kMargin, 0);
  NSString *const text = shownText(field);
  const NSRange selection = [field qvdevice_selection];
  const NSUInteger start = std::min(selection.location, [text length]);
  const NSUInteger end = std::min(NSMaxRange(selection), [text length]);
  const CGFloat before = Canvas::width([text substringToIndex:start], kFont);
  const CGFloat selected = Canvas::width([text substringWithRange:NSMakeRange(start, end - start)], kFont);
  return CGRectMake(room.origin.x + std::min(before, room.size.width), room.origin.y,
                    std::clamp(room.size.width - before, CGFloat{0}, selected), room.size.height);
}

void drawTextField(Scene &scene, UITextField *field) {
  const CGRect bounds = [field bounds];
  if (![field backgroundColor]) scene.canvas.fill(bounds, palette::kWhite, kRadius);
  scene.canvas.stroke(CGRectInset(bounds, 0.25, 0.25), palette::kSeparator, 0.5, kRadius);
  const CGRect room = CGRectInset(bounds, kMargin, 0);
  NSString *const text = shownText(field);
  if ([field isEditing]) {
    const CGRect place = placeOfSelection(field);
    const CGRect line = CGRectInset(place, 0, std::max(CGFloat{0}, (place.size.height - 24) / 2));
    if (place.size.width > 0)
      scene.canvas.fill(line, palette::kSelection, 2);
    else
      scene.canvas.fill(CGRectMake(line.origin.x, line.origin.y, 2, line.size.height), palette::kTint, 1);
  }
  if ([text length])
    scene.canvas.text(text, room, {.font = kFont});
  else
    scene.canvas.text([field placeholder], room, { .font = kFont, .color = palette::kPlaceholder });
}

} // namespace qvdevice
