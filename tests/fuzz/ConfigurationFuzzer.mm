// SBZorbelConfigHelper on configurations of every shape, property lists or not, from an SDK that is ready or not.
#include "Fuzzer.h"

#include <objc/runtime.h>

#import <Zorbel/Zorbel.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "startup/methods.hpp"

@interface NSObject (SBZorbelConfigHelper)
+ (BOOL)boolValueForKey:(NSString *)key;
+ (BOOL)isLogCapturingEnabled;
+ (BOOL)isKeyboardDictationAllowed;
+ (NSMutableDictionary *)filteredZorbelConfig;
+ (NSMutableDictionary *)filteredConfigFromConfig:(NSDictionary *)config;
@end

namespace {

NSString *const kLogCapture = @"QV_ZB_WR_ENABLE_LOG_CAPTURE";
NSString *const kDictation = @"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION";
constexpr int kDeepest = 40;

/// Makes objects of the input's bytes; zeroes when they are used up.
class Maker {
public:
  Maker(const std::uint8_t *data, std::size_t size) : at_(data), end_(data + size) {}

  unsigned byte() { return at_ < end_ ? *at_++ : 0; }

  std::vector<std::uint8_t> bytes(std::size_t wanted) {
    const std::size_t count = std::min(wanted, static_cast<std::size_t>(end_ - at_));
    std::vector<std::uint8_t> taken(at_, at_ + count);
    at_ += count;
    return taken;
  }

  template <class Number> Number number() {
    Number value{};
    const auto taken = bytes(sizeof value);
    if (!taken.empty()) std::memcpy(&value, taken.data(), taken.size());
    return value;
  }

  NSString *latinText() {
    const auto taken = bytes(byte() % 48);
    return [[[NSString alloc] initWithBytes:taken.data() length:taken.size()
                                   encoding:NSISOLatin1StringEncoding] autorelease];
  }

  /// Any UTF-16 units that the platform takes for a text.
  NSString *wideText() {
    std::vector<unichar> units(byte() % 16);
    for (unichar &unit : units)
      unit = number<unichar>();
    NSString *const text = [NSString stringWithCharacters:units.data() length:units.size()];
    return text ? text : @"";
  }

  NSString *key() {
    switch (byte() % 5) {
    case 0:
      return kLogCapture;
    case 1:
      return [NSMutableString stringWithString:kDictation];
    case 2:
      return [@"QV_ZB_WR_" stringByAppendingString:latinText()];
    case 3:
      return wideText();
    default:
      return latinText();
    }
  }

  NSDictionary *dictionary(int depth) {
    NSMutableDictionary *const all = [NSMutableDictionary dictionary];
    for (unsigned count = byte() % 8; count > 0; --count) {
      NSString *const name = key();
      [all setObject:value(depth) forKey:name];
    }
    return all;
  }

  NSArray *array(int depth) {
    NSMutableArray *const all = [NSMutableArray array];
    for (unsigned count = byte() % 8; count > 0; --count)
      [all addObject:value(depth)];
    return all;
  }

  id value(int depth) {
    switch (byte() % (depth < kDeepest ? 14 : 12)) {
    case 0:
      return [NSNumber numberWithBool:byte() & 1];
    case 1:
      return [NSNumber numberWithChar:number<char>()];
    case 2:
      return [NSNumber numberWithInt:number<int>()];
    case 3:
      return [NSNumber numberWithLongLong:number<long long>()];
    case 4:
      return [NSNumber numberWithUnsignedLongLong:number<unsigned long long>()];
    case 5:
      return [NSNumber numberWithDouble:number<double>()];
    case 6:
      return latinText();
    case 7:
      return wideText();
    case 8:
      return [NSNull null];
    case 9: {
      const auto taken = bytes(byte() % 16);
      return [NSData dataWithBytes:taken.data() length:taken.size()];
    }
    case 10:
      return [NSDate dateWithTimeIntervalSince1970:number<int>()];
    case 11:
      return [NSMutableString stringWithString:latinText()];
    case 12:
      return array(depth + 1);
    default:
      return dictionary(depth + 1);
    }
  }

private:
  const std::uint8_t *at_;
  const std::uint8_t *end_;
};

BOOL ready = NO;
NSDictionary *config = nil;
BOOL answerReady(id, SEL) { return ready; }
NSDictionary *answerConfig(id, SEL) { return config; }

Class setUp() {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  qvsb::addMethodsAndClasses();
  [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
  method_setImplementation(class_getInstanceMethod([Zorbel class], @selector(isReady)),
                           reinterpret_cast<IMP>(&answerReady));
  method_setImplementation(class_getInstanceMethod([Zorbel class], @selector(config)),
                           reinterpret_cast<IMP>(&answerConfig));
  [pool drain];
  return objc_getClass("SBZorbelConfigHelper");
}

BOOL truthOf(id value) {
  if (!ready) return NO;
  if ([value isKindOfClass:[NSNumber class]]) return [value longLongValue] != 0 || [value doubleValue] != 0;
  return [value isKindOfClass:[NSString class]] && [value boolValue];
}

void check(BOOL condition, NSString *promise) {
  if (!condition) fail([NSString stringWithFormat:@"%@, with %@", promise, config]);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const Class helper = setUp();
  withoutRaising([&] {
    Maker maker(data, size);
    const unsigned flags = maker.byte();
    ready = flags & 1;
    config = flags & 2 ? nil : maker.dictionary(0);
    NSDictionary *const before = [[config copy] autorelease];

    check([helper isLogCapturingEnabled] == truthOf([config objectForKey:kLogCapture]), @"log capture");
    check([helper isKeyboardDictationAllowed] == truthOf([config objectForKey:kDictation]), @"dictation");
    for (NSString *key in config)
      check([helper boolValueForKey:key] == truthOf([config objectForKey:key]), @"a key's truth");

    NSMutableDictionary *const expected = [[config mutableCopy] autorelease];
    [expected removeObjectsForKeys:[NSArray arrayWithObjects:kLogCapture, kDictation, nil]];
    NSMutableDictionary *const filtered = [helper filteredConfigFromConfig:config];
    check(filtered == expected || [filtered isEqual:expected], @"the filtered copy");
    check(!filtered || filtered != config, @"a copy");
    check(config == before || [config isEqual:before], @"the input unchanged");
    NSMutableDictionary *const shown = [helper filteredZorbelConfig];
    check(ready ? shown == expected || [shown isEqual:expected] : shown == nil, @"what the host sees");
    [filtered setObject:@"added" forKey:@"added"];
    config = nil;
  });
  return 0;
}
