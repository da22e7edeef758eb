// The whitelist's matcher against the rule as it is told, word by word, in Foundation's terms.
//
// An input is an identifier and patterns, separated by zeros: UTF-8, or UTF-16 where the first byte is odd.
#import <Foundation/Foundation.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "startup/methods.hpp"

@interface NSObject (QVPolicyClass)
+ (id)instance;
- (BOOL)_doesAppID:(NSString *)appId matchPattern:(NSString *)pattern;
- (BOOL)allowsOpenInWithAppId:(NSString *)appId;
- (void)setZorbel:(id)zorbel;
@end

/// An SDK with a whitelist.
@interface QVFuzzedSDK : NSObject {
@public
  NSArray *whitelist;
}
@end

@implementation QVFuzzedSDK
- (BOOL)isReady {
  return YES;
}
- (NSInteger)openInPolicy {
  return 2;
}
- (NSArray *)openInWhitelist {
  return whitelist;
}
@end

namespace {

std::u16string unitsOf(NSString *text) {
  std::u16string units([text length], u'\0');
  [text getCharacters:reinterpret_cast<unichar *>(units.data()) range:NSMakeRange(0, units.size())];
  return units;
}

bool expected(NSString *appId, NSString *pattern) {
  NSString *const trimmed =
      [pattern stringByTrimmingCharactersInSet:[NSCharacterSet characterSetWithCharactersInString:@"."]];
  // Not componentsSeparatedByString:, which takes a dot with an accent on it for another character here.
  const bool prefix = [trimmed rangeOfString:@"." options:NSLiteralSearch].location != NSNotFound;
  return prefix ? unitsOf(appId).starts_with(unitsOf(pattern)) : unitsOf(appId) == unitsOf(pattern);
}

/// The texts of an input; bytes that are no text in the encoding that the first one names are left out.
NSArray *textsOf(const std::uint8_t *data, std::size_t size) {
  NSMutableArray *const texts = [NSMutableArray array];
  const bool wide = data[0] % 2 != 0;
  const std::size_t unit = wide ? 2 : 1;
  std::vector<std::uint8_t> bytes;
  for (std::size_t at = 1; at + unit <= size + unit; at += unit) {
    const bool end = at + unit > size || (data[at] == 0 && (!wide || data[at + 1] == 0));
    if (!end) {
      bytes.insert(bytes.end(), data + at, data + at + unit);
      continue;
    }
    NSString *const text =
        [[[NSString alloc] initWithBytes:bytes.data() length:bytes.size()
                                encoding:wide ? NSUTF16LittleEndianStringEncoding : NSUTF8StringEncoding] autorelease];
    if (text) [texts addObject:text];
    bytes.clear();
  }
  return texts;
}

[[noreturn]] void differ(NSString *appId, NSString *pattern, bool rule) {
  std::fprintf(stderr, "\"%s\" and the pattern \"%s\": the rule says %s\n", [appId UTF8String], [pattern UTF8String],
               rule ? "yes" : "no");
  std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  qvsb::addMethodsAndClasses();
  [pool drain];
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (size == 0) return 0;
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  NSArray *const texts = textsOf(data, size);
  if ([texts count] > 0) {
    id const util = [NSClassFromString(@"ZorbelUtil") instance];
    NSString *const appId = [texts objectAtIndex:0];
    NSArray *const patterns = [texts subarrayWithRange:NSMakeRange(1, [texts count] - 1)];
    bool any = false;
    for (NSString *pattern in patterns) {
      const bool rule = expected(appId, pattern);
      if ([util _doesAppID:appId matchPattern:pattern] != rule) differ(appId, pattern, rule);
      any = any || rule;
    }
    QVFuzzedSDK *const sdk = [[[QVFuzzedSDK alloc] init] autorelease];
    sdk->whitelist = patterns;
    [util setZorbel:sdk];
    if ([util allowsOpenInWithAppId:appId] != any) differ(appId, [patterns description], any);
    [util setZorbel:nil];
  }
  [pool drain];
  return 0;
}
