#import <Zorbel/Zorbel.h>

#include "Policies.h"
#import "Values.h"

using zorbel::objectFrom;
using zorbel::policies;

@implementation Zorbel (Policies)

+ (BOOL)isAppScheme:(id)url {
  if ([url isKindOfClass:[NSString class]]) url = [NSURL URLWithString:url];
  if (![url isKindOfClass:[NSURL class]]) return NO;
  for (NSString *scheme in objectFrom(policies().appSchemes, false)) {
    if ([[url scheme] length] && [scheme caseInsensitiveCompare:[url scheme]] == NSOrderedSame) return YES;
  }
  return NO;
}

+ (NSArray *)zbPasteboardTypePrefixes {
  return objectFrom(policies().zbPasteboardTypePrefixes, false);
}

- (BOOL)isReady {
  return policies().ready;
}

- (BOOL)isReadyToTerminate {
  return policies().readyToTerminate;
}

- (BOOL)isCheckInRequested {
  return policies().checkInRequested;
}

- (NSInteger)authState {
  return policies().authState;
}

- (NSInteger)managedPolicy {
  return policies().managedPolicy;
}

- (NSInteger)openInPolicy {
  return policies().openInPolicy;
}

- (NSInteger)pasteboardPolicy {
  return policies().pasteboardPolicy;
}

- (NSInteger)printPolicy {
  return policies().printPolicy;
}

- (NSArray *)openInWhitelist {
  const auto &whitelist = policies().openInWhitelist;
  return whitelist ? objectFrom(*whitelist, false) : nil;
}

- (NSDictionary *)config {
  return policies().config.is_null() ? nil : objectFrom(policies().config, false);
}

- (NSDictionary *)getAppInfo {
  return policies().appInfo.is_null() ? nil : objectFrom(policies().appInfo, true);
}

@end
