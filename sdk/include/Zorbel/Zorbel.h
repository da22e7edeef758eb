// The management SDK, as the apps and libraries that it manages see it.

#ifndef ZORBEL_ZORBEL_H
#define ZORBEL_ZORBEL_H

#import <Foundation/Foundation.h>
#import <Zorbel/ZorbelDelegate.h>

@class UIEvent, UIPasteboard;

@interface Zorbel : NSObject {
@private
  id _delegate; // weak
  id _appDelegateProxy;
  BOOL _toldReadiness; // since the SDK has become ready
}

/// Makes the shared instance in private mode and answers it. Once made it stays: a second call answers the same one.
+ (id)initPrivateWithDelegate:(id)delegate version:(NSString *)version swizzledMethods:(NSArray *)swizzledMethods;

/// The shared instance; nil as long as nobody has made it.
+ (Zorbel *)sharedInstance;

@end

@interface Zorbel (Logging)

/// Logs one line, `time level text`. Any thread. `format` is as for NSString, "%s" included; nil arguments are allowed.
+ (void)wrapperLogAtLevel:(NSInteger)level format:(NSString *)format, ...;

/// While suspended, lines do not go to the SDK's log file; all else goes on. Any thread.
+ (void)setLoggingToFileSuspended:(BOOL)suspended;

@end

@interface Zorbel (Delegate)

/// Whom the SDK tells of changes, on the main thread; nobody when nil. Not retained.
- (void)setZorbelDelegate:(id<ZorbelDelegate>)delegate;
- (id<ZorbelDelegate>)zorbelDelegate;

/// Starts the SDK. One that is ready tells its delegate so in a later turn of the main run loop.
- (void)startWithLaunchOptions:(NSDictionary *)launchOptions;

@end

/// What the administrator has laid down.
@interface Zorbel (Policies)

/// Whether a URL belongs to the SDK. A string is read as a URL; nil and anything else is not.
+ (BOOL)isAppScheme:(id)url;
/// Prefixes of the pasteboard types by which the SDK marks its items.
+ (NSArray *)zbPasteboardTypePrefixes;

- (BOOL)isReady;
- (BOOL)isReadyToTerminate;
- (BOOL)isCheckInRequested;

- (NSInteger)authState;
- (NSInteger)managedPolicy;
- (NSInteger)openInPolicy;
- (NSInteger)pasteboardPolicy;
- (NSInteger)printPolicy;

/// App identifier patterns; nil without a whitelist.
- (NSArray *)openInWhitelist;
- (NSDictionary *)config;
- (NSDictionary *)getAppInfo;

@end

/// The app's answers to what its delegate was told. `result`: 0 not applied, 1 applied, 2 an error, which the message
/// tells; it may be nil.
@interface Zorbel (Acknowledgements)

- (void)authStateApplied:(NSInteger)result message:(NSString *)message;
- (void)configApplied:(NSInteger)result message:(NSString *)message;
- (void)openInPolicyApplied:(NSInteger)result message:(NSString *)message;
- (void)pasteboardPolicyApplied:(NSInteger)result message:(NSString *)message;
- (void)printPolicyApplied:(NSInteger)result message:(NSString *)message;

@end

/// What the app does through the SDK, and what it lets the SDK know of.
@interface Zorbel (App)

/// Shows the user a message.
- (void)displayMessage:(NSString *)message;
/// The app is about to end its process.
- (void)willExit;
/// The user does something: the time without activity starts anew.
- (void)sendEvent:(UIEvent *)event;
- (void)postPasscodeExtensionResult:(NSDictionary *)result;
/// Stands for the pasteboard: what is read from it and written to it goes to the pasteboard. Nil for nil.
- (UIPasteboard *)proxyForPasteboard:(UIPasteboard *)pasteboard;

@end

#endif
