#include "Screen/Sheet.h"

#import "UIKit/ShareSheet.h"

namespace qvdevice {

namespace {

NSString *nameOf(id item) {
  if ([item isKindOfClass:[NSURL class]]) return [item isFileURL] ? [item lastPathComponent] : [item absoluteString];
  return [item isKindOfClass:[NSString class]] ? item : @"1 item";
}

/// What is done here, and not with another app or service: lines rather than pictures.
bool isAction(UIActivity *activity) {
  return [@[
    UIActivityTypeCopyToPasteboard, UIActivityTypePrint, UIActivityTypeAddToReadingList, UIActivityTypeAssignToContact,
    UIActivityTypeSaveToCameraRoll, @"com.apple.UIKit.activity.Quicklook"
  ] containsObject:[activity activityType] ? [activity activityType] : @""];
}

bool isApp(UIActivity *activity) { return ![activity isKindOfClass:[QVDeviceSystemActivity class]]; }

} // namespace

void drawShareSheet(Scene &scene, UIActivityViewController *controller) {
  NSArray *const items = [controller qvdevice_items];
  Sheet sheet{.title = [items count] == 1 ? nameOf([items objectAtIndex:0])
                                          : [NSString stringWithFormat:@"%lu items", (unsigned long)[items count]],
              .subtitle = @"Share",
              .tiles = {},
              .rows = {}};
  for (UIActivity *activity in [controller qvdevice_offered]) {
    NSString *const title = [activity activityTitle];
    if (isAction(activity))
      sheet.rows.push_back(title);
    else
      sheet.tiles.push_back({title, isApp(activity) ? SheetTile::Kind::kApp : SheetTile::Kind::kSystem});
  }
  if (sheet.tiles.empty() && sheet.rows.empty()) sheet.subtitle = @"There is nothing to share it with.";
  drawSheet(scene, sheet);
}

} // namespace qvdevice
