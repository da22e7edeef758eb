#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIResponder.h>

@class UIApplication, UIEvent, UIWindow;

typedef NSString *UIApplicationLaunchOptionsKey;
typedef NSString *UIApplicationOpenURLOptionsKey;
typedef NSString *UIApplicationExtensionPointIdentifier;

typedef NS_ENUM(NSInteger, UIApplicationState) {
  UIApplicationStateActive,
  UIApplicationStateInactive,
  UIApplicationStateBackground,
};

typedef NS_ENUM(NSInteger, UIInterfaceOrientation) {
  UIInterfaceOrientationUnknown = 0,
  UIInterfaceOrientationPortrait = 1,
  UIInterfaceOrientationPortraitUpsideDown = 2,
  UIInterfaceOrientationLandscapeRight = 3,
  UIInterfaceOrientationLandscapeLeft = 4,
};

typedef NS_OPTIONS(NSUInteger, UIInterfaceOrientationMask) {
  UIInterfaceOrientationMaskPortrait = 1 << UIInterfaceOrientationPortrait,
  UIInterfaceOrientationMaskLandscapeLeft = 1 << UIInterfaceOrientationLandscapeLeft,
  UIInterfaceOrientationMaskLandscapeRight = 1 << UIInterfaceOrientationLandscapeRight,
  UIInterfaceOrientationMaskPortraitUpsideDown = 1 << UIInterfaceOrientationPortraitUpsideDown,
  UIInterfaceOrientationMaskLandscape = UIInterfaceOrientationMaskLandscapeLeft |
                                        UIInterfaceOrientationMaskLandscapeRight,
  UIInterfaceOrientationMaskAll = UIInterfaceOrientationMaskPortrait | UIInterfaceOrientationMaskLandscape |
                                  UIInterfaceOrientationMaskPortraitUpsideDown,
  UIInterfaceOrientationMaskAllButUpsideDown = UIInterfaceOrientationMaskPortrait | UIInterfaceOrientationMaskLandscape,
};

typedef NSUInteger UIBackgroundTaskIdentifier;
UIKIT_EXTERN UIBackgroundTaskIdentifier const UIBackgroundTaskInvalid;

@protocol UIApplicationDelegate <NSObject>
@optional

@property (nonatomic, strong) UIWindow *window;

- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)launchOptions;
- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)launchOptions;
- (void)applicationDidFinishLaunching:(UIApplication *)application;

- (void)applicationDidBecomeActive:(UIApplication *)application;
- (void)applicationWillResignActive:(UIApplication *)application;
- (void)applicationDidEnterBackground:(UIApplication *)application;
- (void)applicationWillEnterForeground:(UIApplication *)application;
- (void)applicationWillTerminate:(UIApplication *)application;
- (void)applicationDidReceiveMemoryWarning:(UIApplication *)application;
- (void)applicationSignificantTimeChange:(UIApplication *)application;
- (void)applicationProtectedDataDidBecomeAvailable:(UIApplication *)application;
- (void)applicationProtectedDataWillBecomeUnavailable:(UIApplication *)application;

- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options;
- (BOOL)application:(UIApplication *)application
              openURL:(NSURL *)url
    sourceApplication:(NSString *)sourceApplication
           annotation:(id)annotation;
- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url;

/// Whether extensions of this kind may be used in the app: other makers' keyboards are asked for when one is first
/// shown.
- (BOOL)application:(UIApplication *)application
    shouldAllowExtensionPointIdentifier:(UIApplicationExtensionPointIdentifier)identifier;

- (UIInterfaceOrientationMask)application:(UIApplication *)application
    supportedInterfaceOrientationsForWindow:(UIWindow *)window;

@end

@interface UIApplication : UIResponder {
@private
  id<UIApplicationDelegate> _delegate;
  UIApplicationState _applicationState;
  UIInterfaceOrientation _statusBarOrientation;
  BOOL _ownsDelegate;
  BOOL _idleTimerDisabled;
}

+ (UIApplication *)sharedApplication;

@property (nonatomic, assign) id<UIApplicationDelegate> delegate;
@property (nonatomic, readonly) UIApplicationState applicationState;
@property (nonatomic, readonly) UIWindow *keyWindow;
/// All windows of the app, hidden ones too, from the lowest level to the highest, the frontmost of each level last.
@property (nonatomic, readonly) NSArray *windows;
/// The way up in which the app is shown.
@property (nonatomic, readonly) UIInterfaceOrientation statusBarOrientation;
@property (nonatomic, getter=isIdleTimerDisabled) BOOL idleTimerDisabled;
@property (nonatomic, readonly, getter=isProtectedDataAvailable) BOOL protectedDataAvailable;

- (void)sendEvent:(UIEvent *)event;
/// Without a target: to whoever answers the action first, from the first responder upwards.
- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender forEvent:(UIEvent *)event;

- (BOOL)canOpenURL:(NSURL *)url;
- (BOOL)openURL:(NSURL *)url;
- (void)openURL:(NSURL *)url options:(NSDictionary *)options completionHandler:(void (^)(BOOL success))completion;

- (UIBackgroundTaskIdentifier)beginBackgroundTaskWithExpirationHandler:(void (^)(void))handler;
- (void)endBackgroundTask:(UIBackgroundTaskIdentifier)identifier;

@end

UIKIT_EXTERN int UIApplicationMain(int argc, char *argv[], NSString *principalClassName, NSString *delegateClassName);

UIKIT_EXTERN NSNotificationName const UIApplicationDidFinishLaunchingNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationDidBecomeActiveNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationWillResignActiveNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationDidEnterBackgroundNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationWillEnterForegroundNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationWillTerminateNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationDidReceiveMemoryWarningNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationWillChangeStatusBarOrientationNotification;
UIKIT_EXTERN NSNotificationName const UIApplicationDidChangeStatusBarOrientationNotification;

UIKIT_EXTERN UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsURLKey;
UIKIT_EXTERN UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsSourceApplicationKey;
UIKIT_EXTERN UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsAnnotationKey;
UIKIT_EXTERN UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsSourceApplicationKey;
UIKIT_EXTERN UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsAnnotationKey;
UIKIT_EXTERN UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsOpenInPlaceKey;

UIKIT_EXTERN UIApplicationExtensionPointIdentifier const UIApplicationKeyboardExtensionPointIdentifier;
