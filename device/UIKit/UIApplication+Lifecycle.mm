#import "IncomingURL.h"
#import "Lifecycle.h"
#import "MainStoryboard.h"

#import <QVDevice/QVDevice.h>

#include <cstdlib>

NSNotificationName const UIApplicationDidFinishLaunchingNotification = @"UIApplicationDidFinishLaunchingNotification";
NSNotificationName const UIApplicationDidBecomeActiveNotification = @"UIApplicationDidBecomeActiveNotification";
NSNotificationName const UIApplicationWillResignActiveNotification = @"UIApplicationWillResignActiveNotification";
NSNotificationName const UIApplicationDidEnterBackgroundNotification = @"UIApplicationDidEnterBackgroundNotification";
NSNotificationName const UIApplicationWillEnterForegroundNotification = @"UIApplicationWillEnterForegroundNotification";
NSNotificationName const UIApplicationWillTerminateNotification = @"UIApplicationWillTerminateNotification";
NSNotificationName const UIApplicationDidReceiveMemoryWarningNotification =
    @"UIApplicationDidReceiveMemoryWarningNotification";

@implementation UIApplication (QVDeviceLifecycle)

// The delegate hears of a step before those who watch for its notification.
- (void)qvdevice_announce:(NSString *)event delegate:(SEL)selector notification:(NSString *)notification {
  QVDeviceTrace(@{@"kind" : @"lifecycle", @"event" : event});
  if ([_delegate respondsToSelector:selector]) [_delegate performSelector:selector withObject:self];
  [[NSNotificationCenter defaultCenter] postNotificationName:notification object:self];
}

// Answers whether the delegate wants what the app was launched for: not answering at all counts as yes.
- (BOOL)qvdevice_finishLaunchingWithOptions:(NSDictionary *)options {
  UIWindow *const storyboardWindow = [self qvdevice_makeStoryboardWindow];
  BOOL wanted = YES;
  QVDeviceTrace(@{@"kind" : @"lifecycle", @"event" : @"willFinishLaunching"});
  if ([_delegate respondsToSelector:@selector(application:willFinishLaunchingWithOptions:)])
    wanted = [_delegate application:self willFinishLaunchingWithOptions:options];
  QVDeviceTrace(@{@"kind" : @"lifecycle", @"event" : @"didFinishLaunching"});
  if ([_delegate respondsToSelector:@selector(application:didFinishLaunchingWithOptions:)])
    wanted = [_delegate application:self didFinishLaunchingWithOptions:options] && wanted;
  else if ([_delegate respondsToSelector:@selector(applicationDidFinishLaunching:)])
    [_delegate applicationDidFinishLaunching:self];
  [self qvdevice_showStoryboardWindow:storyboardWindow];
  [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidFinishLaunchingNotification object:self
                                                    userInfo:options];
  return wanted;
}

- (void)qvdevice_launch {
  QVDeviceIncomingURL *const incoming = [QVDeviceIncomingURL incomingFromLaunch];
  const BOOL wanted = [self qvdevice_finishLaunchingWithOptions:[incoming launchOptions]];
  if (incoming && wanted) [self qvdevice_open:incoming];
  [self qvdevice_becomeActive];
}

- (NSString *)qvdevice_becomeActive {
  switch ([self applicationState]) {
  case UIApplicationStateActive:
    return nil;
  case UIApplicationStateBackground:
    return @"the app is in the background";
  case UIApplicationStateInactive:
    break;
  }
  [self qvdevice_setState:UIApplicationStateActive];
  [self qvdevice_announce:@"didBecomeActive" delegate:@selector(applicationDidBecomeActive:)
             notification:UIApplicationDidBecomeActiveNotification];
  return nil;
}

- (NSString *)qvdevice_resignActive {
  if ([self applicationState] != UIApplicationStateActive) return @"the app is not active";
  // The app is still active while it is told.
  [self qvdevice_announce:@"willResignActive" delegate:@selector(applicationWillResignActive:)
             notification:UIApplicationWillResignActiveNotification];
  [self qvdevice_setState:UIApplicationStateInactive];
  return nil;
}

- (NSString *)qvdevice_enterBackground {
  if ([self applicationState] == UIApplicationStateBackground) return @"the app is in the background already";
  if ([self applicationState] == UIApplicationStateActive) [self qvdevice_resignActive];
  [self qvdevice_setState:UIApplicationStateBackground];
  [self qvdevice_announce:@"didEnterBackground" delegate:@selector(applicationDidEnterBackground:)
             notification:UIApplicationDidEnterBackgroundNotification];
  return nil;
}

- (void)qvdevice_comeToForeground {
  [self qvdevice_announce:@"willEnterForeground" delegate:@selector(applicationWillEnterForeground:)
             notification:UIApplicationWillEnterForegroundNotification];
  [self qvdevice_setState:UIApplicationStateInactive];
}

// An app comes to the foreground in order to be used: becoming active is part of it.
- (NSString *)qvdevice_enterForeground {
  if ([self applicationState] != UIApplicationStateBackground) return @"the app is not in the background";
  [self qvdevice_comeToForeground];
  return [self qvdevice_becomeActive];
}

- (void)qvdevice_bringToFrontForURL:(QVDeviceIncomingURL *)incoming {
  const BOOL wasInBackground = [self applicationState] == UIApplicationStateBackground;
  if (wasInBackground) [self qvdevice_comeToForeground];
  [self qvdevice_open:incoming];
  if (wasInBackground) [self qvdevice_becomeActive];
}

- (void)qvdevice_terminate {
  [self qvdevice_announce:@"willTerminate" delegate:@selector(applicationWillTerminate:)
             notification:UIApplicationWillTerminateNotification];
  std::exit(EXIT_SUCCESS);
}

@end
