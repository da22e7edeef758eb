// What the SDK tells the app, and asks it.

#ifndef ZORBEL_ZORBELDELEGATE_H
#define ZORBEL_ZORBELDELEGATE_H

#import <Foundation/Foundation.h>

@class Zorbel;

/// Called on the main thread only.
@protocol ZorbelDelegate <NSObject>

/// The SDK answers with the administrator's policies from now on.
- (void)zorbelIsReady:(Zorbel *)zorbel;

/// 0 unauthorised, 1 authorised, 2 retired. `message` is for the user; it may be nil.
- (void)zorbel:(Zorbel *)zorbel authStateChangedTo:(NSInteger)state withMessage:(NSString *)message;
- (void)zorbel:(Zorbel *)zorbel configChangedTo:(NSDictionary *)config;

/// 2 managed.
- (void)zorbel:(Zorbel *)zorbel managedPolicyChangedTo:(NSInteger)policy;
/// 0 unauthorised, 1 authorised, 2 only the apps of `whitelist`, which is nil without one.
- (void)zorbel:(Zorbel *)zorbel openInPolicyChangedTo:(NSInteger)policy whitelist:(NSArray *)whitelist;
/// 0 unauthorised, 1 authorised, 2 secure copy.
- (void)zorbel:(Zorbel *)zorbel pasteboardPolicyChangedTo:(NSInteger)policy;
/// 0 unauthorised, 1 authorised.
- (void)zorbel:(Zorbel *)zorbel printPolicyChangedTo:(NSInteger)policy;

- (BOOL)isPasscodeExtensionActive;
- (BOOL)canAppDisplayPasscodeExtension;
/// The user has to show who they are, in the passcode extension.
- (void)authenticateUser;

@end

#endif
