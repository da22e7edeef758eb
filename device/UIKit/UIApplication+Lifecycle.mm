#import "Lifecycle.h"

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

- (void)qvdevice_finishLaunchingWithOptions:(NSDictionary *)options {
  QVDeviceTrace(@{@"kind" : @"lifecycle", @"event" : @"willFinishLaunching"});
  if ([_delegate respondsToSelector:@selector(application:willFinishLaunchingWithOptions:)])
    [_delegate application:self willFinishLaunchingWithOptions:options];
  QVDeviceTrace(@{@"kind" : @"lifecycle", @"event" : @"didFinishLaunching"});
  if ([_delegate respondsToSelector:@selector(application:didFinishLaunchingWithOptions:)])
    [_delegate application:self didFinishLaunchingWithOptions:options];
  else if ([_delegate respondsToSelector:@selector(applicationDidFinishLaunching:)])
    [_delegate applicationDidFinishLaunching:self];
  [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidFinishLaunchingNotification object:self
                                                    userInfo:options];
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

// An app comes to the foreground in order to be used: becoming active is part of it.
- (NSString *)qvdevice_enterForeground {
  if ([self applicationState] != UIApplicationStateBackground) return @"the app is not in the background";
  [self qvdevice_announce:@"willEnterForeground" delegate:@selector(applicationWillEnterForeground:)
             notification:UIApplicationWillEnterForegroundNotification];
  [self qvdevice_setState:UIApplicationStateInactive];
  return [self qvdevice_becomeActive];
}

- (void)qvdevice_terminate {
  [self qvdevice_announce:@"willTerminate" delegate:@selector(applicationWillTerminate:)
             notification:UIApplicationWillTerminateNotification];
  std::exit(EXIT_SUCCESS);
}

@end
