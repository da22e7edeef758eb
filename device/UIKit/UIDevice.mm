#import "Rotation.h"

#import <QVDevice/QVDevice.h>

NSNotificationName const UIDeviceOrientationDidChangeNotification = @"UIDeviceOrientationDidChangeNotification";

namespace {
// There is one device.
UIDeviceOrientation held = UIDeviceOrientationPortrait;
} // namespace

@implementation UIDevice

+ (UIDevice *)currentDevice {
  static UIDevice *const device = [[UIDevice alloc] init];
  return device;
}

- (NSString *)name {
  return [self model];
}

- (NSString *)model {
  return [self userInterfaceIdiom] == UIUserInterfaceIdiomPad ? @"iPad" : @"iPhone";
}

- (NSString *)localizedModel {
  return [self model];
}

- (NSString *)systemName {
  return [[self systemVersion] integerValue] >= 16 && [self userInterfaceIdiom] == UIUserInterfaceIdiomPad ? @"iPadOS"
                                                                                                           : @"iOS";
}

- (NSString *)systemVersion {
  return [QVDeviceSettings() objectForKey:@"systemVersion"];
}

- (UIUserInterfaceIdiom)userInterfaceIdiom {
  return [[QVDeviceSettings() objectForKey:@"idiom"] isEqualToString:@"pad"] ? UIUserInterfaceIdiomPad
                                                                             : UIUserInterfaceIdiomPhone;
}

- (UIDeviceOrientation)orientation {
  return held;
}

@end

@implementation UIDevice (QVDeviceRotation)

- (void)qvdevice_setOrientation:(UIDeviceOrientation)orientation {
  if (orientation == held) return;
  held = orientation;
  [[NSNotificationCenter defaultCenter] postNotificationName:UIDeviceOrientationDidChangeNotification object:self];
  [[UIApplication sharedApplication] qvdevice_followDeviceOrientation];
}

@end
