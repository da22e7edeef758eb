#import "Sharing.h"

#import "Activities.h"

#include "OtherApps.h"

#include <cstdlib>

@implementation QVSharingSDK

- (void)dealloc {
  [openInWhitelist release];
  [super dealloc];
}

- (BOOL)isReady {
  ++questions;
  return ready;
}

- (NSInteger)openInPolicy {
  return openInPolicy;
}

- (NSInteger)pasteboardPolicy {
  return pasteboardPolicy;
}

- (NSInteger)printPolicy {
  ++questionsAboutPrinting;
  return printPolicy;
}

- (NSArray *)openInWhitelist {
  return openInWhitelist;
}

@end

namespace sharing {

QVSharingSDK *startSDK() {
  QVSharingSDK *const sdk = [[QVSharingSDK alloc] init];
  sdk->ready = YES;
  [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:sdk];
  return sdk;
}

void stopSDK(QVSharingSDK *sdk) {
  [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:nil];
  [sdk release];
}

std::string deviceFolder() { return std::getenv("QVDEVICE_DEVICE"); }

NSURL *file(NSString *name, NSString *text) {
  NSString *const documents =
      [NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, YES) objectAtIndex:0];
  NSString *const path = [documents stringByAppendingPathComponent:name];
  [text writeToFile:path atomically:YES encoding:NSUTF8StringEncoding error:NULL];
  return [NSURL fileURLWithPath:path];
}

UIViewController *presenter() {
  static UIWindow *window;
  if (!window) {
    if (![UIApplication sharedApplication]) [[UIApplication alloc] init];
    window = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
    [window setRootViewController:[[[UIViewController alloc] init] autorelease]];
    [window makeKeyAndVisible];
  }
  return [window rootViewController];
}

NSArray *allActivities() { return QVDeviceActivities(); }

std::vector<std::string> whatLeft() {
  std::vector<std::string> places;
  for (const auto &[path, text] : takeWhatLeft(deviceFolder()))
    places.push_back(text == "secret" ? path : path + " (" + text + ")");
  UIPasteboard *const pasteboard = [UIPasteboard generalPasteboard];
  if ([[pasteboard items] count]) {
    const bool secret = [[pasteboard string] isEqual:@"secret"];
    places.push_back(secret ? "pasteboard"
                            : "pasteboard (" + std::string([[[pasteboard items] description] UTF8String]));
    [pasteboard setItems:@[]];
  }
  return places;
}

std::vector<std::string> typesOf(NSArray *activities) {
  std::vector<std::string> types;
  for (UIActivity *activity in activities)
    types.push_back([activity activityType] ? [[activity activityType] UTF8String] : "(nil)");
  return types;
}

} // namespace sharing
