#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

typedef NS_ENUM(NSInteger, UIUserInterfaceIdiom) {
  UIUserInterfaceIdiomUnspecified = -1,
  UIUserInterfaceIdiomPhone,
  UIUserInterfaceIdiomPad,
};

typedef NS_ENUM(NSInteger, UIDeviceOrientation) {
  UIDeviceOrientationUnknown,
  UIDeviceOrientationPortrait,
  UIDeviceOrientationPortraitUpsideDown,
  UIDeviceOrientationLandscapeLeft,  // the home button on the right
  UIDeviceOrientationLandscapeRight, // the home button on the left
  UIDeviceOrientationFaceUp,
  UIDeviceOrientationFaceDown,
};

@interface UIDevice : NSObject

+ (UIDevice *)currentDevice;

@property (nonatomic, readonly) NSString *name;
@property (nonatomic, readonly) NSString *model;
@property (nonatomic, readonly) NSString *localizedModel;
@property (nonatomic, readonly) NSString *systemName;
@property (nonatomic, readonly) NSString *systemVersion;
@property (nonatomic, readonly) UIUserInterfaceIdiom userInterfaceIdiom;
/// How the user holds the device.
@property (nonatomic, readonly) UIDeviceOrientation orientation;

@end

/// Posted on the main thread when the user has turned the device, before the app is asked whether it follows.
UIKIT_EXTERN NSNotificationName const UIDeviceOrientationDidChangeNotification;

#define UI_USER_INTERFACE_IDIOM() ([[UIDevice currentDevice] userInterfaceIdiom])
