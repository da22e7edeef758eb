#import "Activities.h"

#import "OtherApps.h"
#import "WaysOut.h"

#import <UIKit/UIPrintInteractionController.h>

#include "container/Settings.h"

namespace {

NSString *const kQuickLook = @"com.apple.UIKit.activity.Quicklook";
NSString *const kNotes = @"com.apple.mobilenotes.SharingExtension";
NSString *const kPhotoStream = @"com.apple.mobileslideshow.StreamShareService";

// The sharing of documents with other apps by name has changed its form twice.
NSString *openInType(NSString *applicationIdentifier) {
  if (qvdevice::isSystemVersionAtLeast("11")) return @"com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy";
  return [(qvdevice::isSystemVersionAtLeast("10")
               ? @"com.apple.UIKit.activity.Open.Copy."
               : @"com.apple.UIKit.activity.OpenWithApp-") stringByAppendingString:applicationIdentifier];
}

// Other apps are offered by name from release 9 on. From 13 on the sheet is drawn, and a document handed over, by a
// process of the system's that asks the app nothing about it: such an activity is none of the app's.
bool offersOpenIn() { return qvdevice::isSystemVersionAtLeast("9") && !qvdevice::isSystemVersionAtLeast("13"); }

bool isFile(id item) { return [item isKindOfClass:[NSURL class]] && [item isFileURL]; }
bool isAddress(id item) { return [item isKindOfClass:[NSURL class]] && ![item isFileURL]; }

template <class Test> bool any(NSArray *items, Test test) {
  for (id item in items)
    if (test(item)) return true;
  return false;
}

bool takes(UIActivityType type, NSArray *items) {
  if ([type isEqualToString:UIActivityTypeAddToReadingList]) return any(items, isAddress);
  if ([type isEqualToString:kQuickLook]) return any(items, isFile);
  if ([type isEqualToString:UIActivityTypePrint] && ![UIPrintInteractionController isPrintingAvailable]) return false;
  // Only for photographs and films, which this device has none of.
  for (NSString *each in @[
         UIActivityTypeAssignToContact, UIActivityTypeSaveToCameraRoll, UIActivityTypePostToFlickr,
         UIActivityTypePostToVimeo, kPhotoStream
       ])
    if ([type isEqualToString:each]) return false;
  return any(items, [](id item) { return QVDeviceItemBytes(item) != nil; });
}

} // namespace

@implementation QVDeviceSystemActivity

+ (instancetype)activityWithType:(UIActivityType)type title:(NSString *)title {
  QVDeviceSystemActivity *const activity = [[[self alloc] init] autorelease];
  activity->_type = [type copy];
  activity->_title = [title copy];
  return activity;
}

- (void)dealloc {
  [_type release];
  [_title release];
  [_items release];
  [super dealloc];
}

- (UIActivityType)activityType {
  return _type;
}

- (NSString *)activityTitle {
  return _title;
}

- (BOOL)canPerformWithActivityItems:(NSArray *)items {
  return takes(_type, items);
}

- (void)prepareWithActivityItems:(NSArray *)items {
  [_items autorelease];
  _items = [items copy];
}

- (void)performActivity {
  const bool prints = [_type isEqualToString:UIActivityTypePrint];
  // Asked again: the answer may have changed while the sheet was shown.
  if (prints && ![UIPrintInteractionController isPrintingAvailable]) {
    [self activityDidFinish:NO];
    return;
  }
  if (prints)
    QVDevicePrint(_items);
  else if ([_type isEqualToString:UIActivityTypeCopyToPasteboard])
    QVDeviceCopy(_items);
  else
    QVDeviceSend(_type, _items);
  [self activityDidFinish:YES];
}

@end

@implementation QVDeviceExtensionActivity

+ (instancetype)activityWithExtension:(QVDeviceShareExtension *)extension {
  QVDeviceExtensionActivity *const activity = [[[self alloc] init] autorelease];
  activity->_extension = [extension retain];
  return activity;
}

- (void)dealloc {
  [_extension release];
  [_items release];
  [super dealloc];
}

- (UIActivityType)activityType {
  return [_extension identifier];
}

- (NSString *)activityTitle {
  return [_extension localizedName];
}

- (BOOL)canPerformWithActivityItems:(NSArray *)items {
  return any(items, [](id item) { return QVDeviceItemBytes(item) != nil; });
}

- (void)prepareWithActivityItems:(NSArray *)items {
  [_items autorelease];
  _items = [items copy];
}

- (void)performActivity {
  QVDeviceHandToApp([_extension applicationIdentifier], _items);
  [self activityDidFinish:YES];
}

@end

@implementation QVDeviceOpenInActivity

+ (instancetype)activityWithApplication:(LSApplicationProxy *)application {
  QVDeviceOpenInActivity *const activity = [[[self alloc] init] autorelease];
  activity->_application = [application retain];
  return activity;
}

- (void)dealloc {
  [_application release];
  [_items release];
  [super dealloc];
}

- (NSString *)applicationIdentifier {
  return [_application applicationIdentifier];
}

- (UIActivityType)activityType {
  return openInType([_application applicationIdentifier]);
}

- (NSString *)activityTitle {
  return [NSString stringWithFormat:@"Copy to %@", [_application localizedName]];
}

- (BOOL)canPerformWithActivityItems:(NSArray *)items {
  return any(items, isFile) && offersOpenIn();
}

- (void)prepareWithActivityItems:(NSArray *)items {
  [_items autorelease];
  _items = [items copy];
}

- (void)performActivity {
  QVDeviceHandToApp([_application applicationIdentifier], _items);
  [self activityDidFinish:YES];
}

@end

NSMutableArray *QVDeviceActivities(void) {
  NSMutableArray *const activities = [NSMutableArray array];
  const auto add = [activities](UIActivityType type, NSString *title) {
    [activities addObject:[QVDeviceSystemActivity activityWithType:type title:title]];
  };
  add(UIActivityTypeAirDrop, @"AirDrop");
  add(UIActivityTypeMessage, @"Message");
  add(UIActivityTypeMail, @"Mail");
  // Release 11 left the networks' own accounts to their apps.
  if (!qvdevice::isSystemVersionAtLeast("11")) {
    add(UIActivityTypePostToTwitter, @"Twitter");
    add(UIActivityTypePostToFacebook, @"Facebook");
    add(UIActivityTypePostToWeibo, @"Weibo");
    add(UIActivityTypePostToTencentWeibo, @"Tencent Weibo");
    add(UIActivityTypePostToFlickr, @"Flickr");
    add(UIActivityTypePostToVimeo, @"Vimeo");
  }
  add(kNotes, @"Notes");
  add(kPhotoStream, @"iCloud Photo Sharing");
  for (QVDeviceShareExtension *extension in QVDeviceShareExtensions())
    [activities addObject:[QVDeviceExtensionActivity activityWithExtension:extension]];
  for (LSApplicationProxy *application in QVDeviceAppsThatOpenDocuments())
    [activities addObject:[QVDeviceOpenInActivity activityWithApplication:application]];
  add(UIActivityTypeAddToReadingList, @"Add to Reading List");
  add(UIActivityTypeCopyToPasteboard, @"Copy");
  add(UIActivityTypePrint, @"Print");
  add(UIActivityTypeAssignToContact, @"Assign to Contact");
  add(UIActivityTypeSaveToCameraRoll, @"Save Image");
  add(kQuickLook, @"Quick Look");
  return activities;
}
