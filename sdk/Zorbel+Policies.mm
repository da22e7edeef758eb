#import <Zorbel/Zorbel.h>

#include "Policies.h"
#import "Values.h"
#include "observation/Reads.h"

using zorbel::objectFrom;
using zorbel::policies;

namespace {

/// A record that is read by people names no more patterns than that.
constexpr std::size_t kNamedPatterns = 32;

/// Answers the value. Where it decides something, the decision's record tells of it.
template <class T> T noted(const char *name, T value) {
  qvdevice::noteRead(name, value);
  return value;
}

void readWhitelist() {
  const auto &whitelist = policies().openInWhitelist;
  if (!qvdevice::isDeciding()) return;
  if (!whitelist)
    qvdevice::noteRead("openInWhitelist", nullptr);
  else if (whitelist->size() <= kNamedPatterns)
    qvdevice::noteRead("openInWhitelist", *whitelist);
  else
    qvdevice::noteRead("openInWhitelist", std::to_string(whitelist->size()) + " patterns");
}

} // namespace

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
  return noted("isReady", policies().ready);
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
  return noted("openInPolicy", policies().openInPolicy);
}

- (NSInteger)pasteboardPolicy {
  return noted("pasteboardPolicy", policies().pasteboardPolicy);
}

- (NSInteger)printPolicy {
  return noted("printPolicy", policies().printPolicy);
}

- (NSArray *)openInWhitelist {
  readWhitelist();
  const auto &whitelist = policies().openInWhitelist;
  return whitelist ? objectFrom(*whitelist, false) : nil;
}

- (NSDictionary *)config {
  if (qvdevice::isDeciding()) qvdevice::noteRead("config", policies().config);
  return policies().config.is_null() ? nil : objectFrom(policies().config, false);
}

- (NSDictionary *)getAppInfo {
  return policies().appInfo.is_null() ? nil : objectFrom(policies().appInfo, true);
}

@end
