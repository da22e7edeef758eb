#import <UIKit/UIKit.h>

#import "FirstResponder.h"
#import "Lifecycle.h"
#import "Rotation.h"
#import "UIViewInternal.h"

#import <QVDevice/QVDevice.h>

#include <objc/runtime.h>

#include "container/Settings.h"

UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsURLKey = @"UIApplicationLaunchOptionsURLKey";
UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsSourceApplicationKey =
    @"UIApplicationLaunchOptionsSourceApplicationKey";
UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsAnnotationKey =
    @"UIApplicationLaunchOptionsAnnotationKey";
UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsSourceApplicationKey =
    @"UIApplicationOpenURLOptionsSourceApplicationKey";
UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsAnnotationKey =
    @"UIApplicationOpenURLOptionsAnnotationKey";
UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsOpenInPlaceKey =
    @"UIApplicationOpenURLOptionsOpenInPlaceKey";
UIApplicationExtensionPointIdentifier const UIApplicationKeyboardExtensionPointIdentifier =
    @"com.apple.keyboard-service";
UIBackgroundTaskIdentifier const UIBackgroundTaskInvalid = 0;

namespace {
UIApplication *shared;

void terminateWithSuccess(UIApplication *self, SEL) { [self qvdevice_terminate]; }

} // namespace

@interface UIApplication (Private)
- (void)_setDelegate:(id<UIApplicationDelegate>)delegate assumeOwnership:(BOOL)assumeOwnership;
@end

@implementation UIApplication

// Not every system has this: whether this one does is among its settings.
+ (void)load {
  if (qvdevice::settings().terminateWithSuccess)
    class_addMethod(self, sel_registerName("terminateWithSuccess"), reinterpret_cast<IMP>(&terminateWithSuccess),
                    "v16@0:8");
}

+ (UIApplication *)sharedApplication {
  return shared;
}

- (instancetype)init {
  if (shared)
    [NSException raise:NSInternalInconsistencyException format:@"There can only be one UIApplication instance."];
  if ((self = [super init])) {
    shared = self;
    _applicationState = UIApplicationStateInactive;
    _statusBarOrientation = UIInterfaceOrientationPortrait;
  }
  return self;
}

- (void)dealloc {
  if (shared == self) shared = nil;
  if (_ownsDelegate) [_delegate release];
  [super dealloc];
}

- (id<UIApplicationDelegate>)delegate {
  return _delegate;
}

- (void)setDelegate:(id<UIApplicationDelegate>)delegate {
  id const before = _ownsDelegate ? _delegate : nil;
  _delegate = delegate;
  _ownsDelegate = NO;
  [before autorelease];
}

- (void)_setDelegate:(id<UIApplicationDelegate>)delegate assumeOwnership:(BOOL)assumeOwnership {
  id const before = _ownsDelegate ? _delegate : nil;
  _delegate = assumeOwnership ? [delegate retain] : delegate;
  _ownsDelegate = assumeOwnership && delegate;
  [before autorelease];
}

@synthesize applicationState = _applicationState;
@synthesize idleTimerDisabled = _idleTimerDisabled;
@synthesize statusBarOrientation = _statusBarOrientation;

- (UIWindow *)keyWindow {
  return [UIWindow qvdevice_keyWindow];
}

- (NSArray *)windows {
  return [UIWindow qvdevice_windows];
}

- (BOOL)isProtectedDataAvailable {
  return YES;
}

- (UIResponder *)nextResponder {
  return [_delegate isKindOfClass:[UIResponder class]] ? (UIResponder *)_delegate : nil;
}

- (void)sendEvent:(UIEvent *)event {
  NSMutableSet *const windows = [NSMutableSet set];
  for (UITouch *touch in [event allTouches])
    if ([touch window]) [windows addObject:[touch window]];
  for (UIWindow *window in windows)
    [window sendEvent:event];
}

- (UIResponder *)qvdevice_firstForActionsFrom:(id)sender {
  if (UIResponder *const first = [UIResponder qvdevice_firstResponder]) return first;
  return [sender isKindOfClass:[UIResponder class]] ? sender : [[self keyWindow] qvdevice_frontmostResponder];
}

- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender forEvent:(UIEvent *)event {
  if (!target) target = [[self qvdevice_firstForActionsFrom:sender] targetForAction:action withSender:sender];
  if (![target respondsToSelector:action]) return NO;
  [target performSelector:action withObject:sender withObject:event];
  return YES;
}

- (BOOL)canOpenURL:(NSURL *)url {
  return [[url scheme] length] > 0 && ![url isFileURL];
}

// No other app runs to take the URL; that it was handed over can be seen in the trace.
- (BOOL)openURL:(NSURL *)url {
  if (![self canOpenURL:url]) return NO;
  QVDeviceTrace(@{@"kind" : @"openURL", @"url" : [url absoluteString]});
  return YES;
}

- (void)openURL:(NSURL *)url options:(NSDictionary *)options completionHandler:(void (^)(BOOL success))completion {
  (void)options;
  const BOOL opened = [self openURL:url];
  if (completion) completion(opened);
}

// An app in the background is never suspended here, so a task is only a number.
- (UIBackgroundTaskIdentifier)beginBackgroundTaskWithExpirationHandler:(void (^)(void))handler {
  (void)handler;
  static UIBackgroundTaskIdentifier last = UIBackgroundTaskInvalid;
  return ++last;
}

- (void)endBackgroundTask:(UIBackgroundTaskIdentifier)identifier {
  (void)identifier;
}

@end

@implementation UIApplication (QVDeviceState)

- (void)qvdevice_setState:(UIApplicationState)state {
  _applicationState = state;
}

@end

@implementation UIApplication (QVDeviceOrientation)

- (void)qvdevice_setStatusBarOrientation:(UIInterfaceOrientation)orientation {
  _statusBarOrientation = orientation;
}

@end
