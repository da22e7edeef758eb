#import <Zorbel/Zorbel.h>

#import <UIKit/UIApplication.h>
#import <Zorbel/ZBAppDelegateProxy.h>
#import <objc/objc-arc.h>

#import "CallRecord.h"
#include "Policies.h"
#import "Values.h"
#import "Zorbel+Changes.h"

using zorbel::objectFrom;
using zorbel::Policies;
using zorbel::policies;

@implementation Zorbel (Delegate)

- (void)setZorbelDelegate:(id<ZorbelDelegate>)delegate {
  objc_storeWeak(&_delegate, delegate);
  QVDeviceRecordCall(NSStringFromSelector(_cmd), @{@"delegate" : QVDeviceUnretained(delegate)},
                     @{@"delegate" : QVDeviceClassName(delegate)});
}

- (id<ZorbelDelegate>)zorbelDelegate {
  return objc_loadWeak(&_delegate);
}

- (void)startWithLaunchOptions:(NSDictionary *)launchOptions {
  QVDeviceRecordCall(NSStringFromSelector(_cmd),
                     @{@"launchOptions" : QVDeviceOrNull([[launchOptions copy] autorelease])});
  if (policies().delegateProxy) [self surroundAppDelegate];
  [self performSelectorOnMainThread:@selector(tellReadiness) withObject:nil waitUntilDone:NO];
}

- (void)surroundAppDelegate {
  UIApplication *const application = [UIApplication sharedApplication];
  id const delegate = [application delegate];
  if (!delegate || [delegate isKindOfClass:[ZBAppDelegateProxy class]]) return;
  // The application does not keep its delegate.
  [_appDelegateProxy autorelease];
  _appDelegateProxy = [[ZBAppDelegateProxy alloc] initWithTarget:delegate];
  [application setDelegate:_appDelegateProxy];
}

/// Once for each time that the SDK becomes ready, however often it is started.
- (void)tellReadiness {
  id<ZorbelDelegate> const delegate = [self zorbelDelegate];
  if (!delegate || !policies().ready || _toldReadiness) return;
  _toldReadiness = YES;
  [delegate zorbelIsReady:self];
}

@end

@implementation Zorbel (Changes)

- (void)tellChangesFrom:(const Policies &)before to:(const Policies &)now message:(NSString *)message {
  if (now.ready != before.ready) _toldReadiness = NO;
  if (now.ready && !before.ready) [self tellReadiness];
  // Asked for each time: whoever is told may go, or put another in its place.
  if (now.authState != before.authState)
    [[self zorbelDelegate] zorbel:self authStateChangedTo:now.authState withMessage:message];
  if (now.config != before.config) [[self zorbelDelegate] zorbel:self configChangedTo:objectFrom(now.config, false)];
  if (now.managedPolicy != before.managedPolicy)
    [[self zorbelDelegate] zorbel:self managedPolicyChangedTo:now.managedPolicy];
  if (now.openInPolicy != before.openInPolicy || now.openInWhitelist != before.openInWhitelist)
    [[self zorbelDelegate] zorbel:self openInPolicyChangedTo:now.openInPolicy
                        whitelist:now.openInWhitelist ? objectFrom(*now.openInWhitelist, false) : nil];
  if (now.pasteboardPolicy != before.pasteboardPolicy)
    [[self zorbelDelegate] zorbel:self pasteboardPolicyChangedTo:now.pasteboardPolicy];
  if (now.printPolicy != before.printPolicy) [[self zorbelDelegate] zorbel:self printPolicyChangedTo:now.printPolicy];
}

@end
