// The management SDK, as the apps and libraries that it manages see it.

#ifndef ZORBEL_ZORBEL_H
#define ZORBEL_ZORBEL_H

#import <Foundation/Foundation.h>

@interface Zorbel : NSObject

/// Logs one line, `time level text`. Any thread. `format` is as for NSString, "%s" included; nil arguments are allowed.
+ (void)wrapperLogAtLevel:(NSInteger)level format:(NSString *)format, ...;

/// Makes the shared instance in private mode and answers it. Once made it stays: a second call answers the same one.
+ (id)initPrivateWithDelegate:(id)delegate version:(NSString *)version swizzledMethods:(NSArray *)swizzledMethods;

/// The shared instance; nil as long as nobody has made it.
+ (Zorbel *)sharedInstance;

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

#endif
