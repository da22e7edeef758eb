// What leaving the app costs under a refusing policy, by the number of items on the pasteboard: the guard's restore,
// and the same arithmetic with Foundation's sets.
#import <UIKit/UIKit.h>
#import <Zorbel/QVDevicePolicies.h>

#include "SideBySide.hpp"

@interface NSObject (QVBenchGuard)
+ (id)instance;
- (void)setZorbel:(id)zorbel;
- (void)takeSnapshot;
- (void)_restorePasteboardSnapshot;
- (BOOL)_isZorbelItem:(NSDictionary *)item;
@end

/// A pasteboard that costs nothing.
@interface QVBenchPasteboard : NSObject {
@public
  NSArray *held;
}
@end
@implementation QVBenchPasteboard
- (NSArray *)items {
  return held;
}
- (void)setItems:(NSArray *)items {
  [held autorelease];
  held = [items retain];
}
@end

@interface QVBenchProxySDK : NSObject {
@public
  QVBenchPasteboard *pasteboard;
}
@end
@implementation QVBenchProxySDK
- (id)proxyForPasteboard:(UIPasteboard *)pasteboardOfTheDevice {
  (void)pasteboardOfTheDevice;
  return pasteboard;
}
@end

namespace {

/// Texts, one in a hundred of them the SDK's.
NSArray *itemsNamed(NSString *name, int count) {
  NSMutableArray *const items = [NSMutableArray array];
  for (int i = 0; i < count; ++i) {
    NSString *const type = i % 100 == 0 ? @"com.example.sdk.item" : @"public.utf8-plain-text";
    [items addObject:@{type : [NSString stringWithFormat:@"%@ %d", name, i]}];
  }
  return items;
}

NSMutableSet *zorbelItems(id util, NSArray *items) {
  NSMutableSet *const found = [NSMutableSet set];
  for (NSDictionary *item in items)
    if ([util _isZorbelItem:item]) [found addObject:item];
  return found;
}

/// The same result as the guard's, with Foundation alone.
void restoreByHand(id util, QVBenchPasteboard *pasteboard, NSArray *snapshot) {
  NSMutableSet *const before = [NSMutableSet setWithArray:snapshot];
  [before minusSet:zorbelItems(util, snapshot)];
  NSMutableSet *const now = [NSMutableSet setWithArray:[pasteboard items]];
  NSSet *const zorbelNow = zorbelItems(util, [pasteboard items]);
  [now minusSet:zorbelNow];
  if ([now count] == 0 || [now isEqualToSet:before]) return;
  [pasteboard setItems:[[before allObjects] arrayByAddingObjectsFromArray:[zorbelNow allObjects]]];
}

void Restore(benchmark::State &state, int count, bool byHandToo) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  QVDeviceZorbelSetPolicies(@"{\"zbPasteboardTypePrefixes\": [\"com.example.sdk.\", \"com.example.%@.other\"]}");
  QVBenchPasteboard *const pasteboard = [[[QVBenchPasteboard alloc] init] autorelease];
  QVBenchProxySDK *const sdk = [[[QVBenchProxySDK alloc] init] autorelease];
  sdk->pasteboard = pasteboard;
  id const util = [NSClassFromString(@"ZorbelUtil") instance];
  [util setZorbel:sdk];
  NSArray *const before = itemsNamed(@"before", count);
  NSArray *const copied = itemsNamed(@"copied", count);
  [pasteboard setItems:before];
  [util takeSnapshot];

  const auto timed = [=](auto work) {
    NSAutoreleasePool *const ofTheTurn = [[NSAutoreleasePool alloc] init];
    [pasteboard setItems:copied];
    const double taken = bench::nanosecondsEach(1, work);
    [ofTheTurn drain];
    return taken;
  };
  const auto guard = [=] { return timed([=] { [util _restorePasteboardSnapshot]; }); };
  const auto byHand = [=] { return timed([=] { restoreByHand(util, pasteboard, before); }); };

  guard();
  NSSet *const restored = [NSSet setWithArray:count > 1000 ? @[] : [pasteboard items]];
  const NSUInteger left = [[pasteboard items] count];
  if (byHandToo) byHand();
  if (left != static_cast<NSUInteger>(count) ||
      (byHandToo && ![restored isEqualToSet:[NSSet setWithArray:[pasteboard items]]])) {
    state.SkipWithError("the pasteboard does not hold what it should after a restore");
  } else if (byHandToo) {
    const bench::Variant variants[] = {{"guard", guard}, {"byHand", byHand}};
    bench::sideBySide(state, variants);
  } else {
    const bench::Variant variants[] = {{"guard", guard}};
    bench::sideBySide(state, variants);
  }
  [util setZorbel:nil];
  [pool drain];
}

void Restore10(benchmark::State &state) { Restore(state, 10, true); }
void Restore1000(benchmark::State &state) { Restore(state, 1000, true); }
// By hand this takes the better part of a minute.
void Restore10000(benchmark::State &state) { Restore(state, 10000, false); }

} // namespace

BENCHMARK(Restore10)->Iterations(200)->Repetitions(11);
BENCHMARK(Restore1000)->Iterations(1)->Repetitions(11);
BENCHMARK(Restore10000)->Iterations(1)->Repetitions(11);

BENCHMARK_MAIN();
