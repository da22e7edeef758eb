// What a share sheet of this device offers beside the app's own activities.
#pragma once

#import <UIKit/UIActivity.h>

@class QVDeviceShareExtension, LSApplicationProxy;

/// One of the system's activities, by its type: copying, printing, or sending to a service.
@interface QVDeviceSystemActivity : UIActivity {
@private
  UIActivityType _type;
  NSString *_title;
  NSArray *_items;
}
+ (instancetype)activityWithType:(UIActivityType)type title:(NSString *)title;
@end

/// Another app's share extension; its type is the extension's identifier.
@interface QVDeviceExtensionActivity : UIActivity {
@private
  QVDeviceShareExtension *_extension;
  NSArray *_items;
}
+ (instancetype)activityWithExtension:(QVDeviceShareExtension *)extension;
@end

/// Another app that the items are opened in; its type as this release has it.
@interface QVDeviceOpenInActivity : UIActivity {
@private
  LSApplicationProxy *_application;
  NSArray *_items;
}
+ (instancetype)activityWithApplication:(LSApplicationProxy *)application;
@property (nonatomic, readonly) NSString *applicationIdentifier;
@end

@interface UIActivity (QVDeviceActivity)
/// Performs the activity with the items; `finished` is called once, when it is done.
- (void)qvdevice_performWithItems:(NSArray *)items finished:(void (^)(BOOL completed))finished;
@end

/// Every activity of the system's, of the share extensions and of the apps that open documents, offered or not; new
/// objects in the order of a sheet.
NSMutableArray *QVDeviceActivities(void);
