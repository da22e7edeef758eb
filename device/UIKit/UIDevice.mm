#import <UIKit/UIDevice.h>

#import <QVDevice/QVDevice.h>

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

@end
