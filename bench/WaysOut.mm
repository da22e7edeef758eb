// What the hooks of the ways out cost: filtering a share sheet under a long whitelist, by its two measures, and the
// edit menu's hooks.
#import <UIKit/UIKit.h>
#import <Zorbel/Zorbel.h>

#include <objc/runtime.h>
#include <time.h>

#include "SideBySide.hpp"

@interface QVBenchPolicySDK : NSObject {
@public
  NSArray *openInWhitelist;
}
@end
@implementation QVBenchPolicySDK
- (BOOL)isReady {
  return YES;
}
- (NSInteger)openInPolicy {
  return 2;
}
- (NSInteger)pasteboardPolicy {
  return 1;
}
- (NSInteger)printPolicy {
  return 1;
}
- (NSArray *)openInWhitelist {
  return openInWhitelist;
}
@end

@interface QVBenchActivity : UIActivity {
@public
  NSString *type;
}
@end
@implementation QVBenchActivity
- (UIActivityType)activityType {
  return type;
}
@end

@interface NSObject (QVBenchWaysOut)
+ (id)instance;
- (void)setZorbel:(id)zorbel;
- (BOOL)allowsOpenInWithAppId:(NSString *)identifier;
- (NSArray *)mergeExcludedActivityTypes:(NSArray *)types;
- (id)arrayByFilteringBlockedActivities:(id)activities;
+ (id)sharedCalloutBar;
- (id)targetForAction:(SEL)action;
- (id)sb_targetForAction:(SEL)action;
- (void)sb_setMenuItems:(NSArray *)items;
@end

namespace {

void silence(id, SEL, NSInteger, NSString *, ...) {}

// What it costs to write a line is the SDK's affair.
void silenceTheLog() {
  const Method logger = class_getClassMethod(NSClassFromString(@"Zorbel"), @selector(wrapperLogAtLevel:format:));
  method_setImplementation(logger, reinterpret_cast<IMP>(&silence));
}

/// The processor time that `work` takes, in nanoseconds: it is longer than the turns that processes get on a busy
/// machine.
template <class Work> double processorTime(Work work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
  };
  const double start = now();
  work();
  return now() - start;
}

/// The SDK with a whitelist of so many patterns, of which only the last one is ever met.
QVBenchPolicySDK *sdkWithPatterns(int count) {
  NSMutableArray *const patterns = [NSMutableArray array];
  for (int i = 1; i < count; ++i)
    [patterns addObject:[NSString stringWithFormat:@"com.example.app%d.edition", i]];
  [patterns addObject:@"com.example.allowed."];
  QVBenchPolicySDK *const sdk = [[[QVBenchPolicySDK alloc] init] autorelease];
  sdk->openInWhitelist = patterns;
  [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:sdk];
  return sdk;
}

/// Half of them allowed.
NSArray *activities(int count) {
  NSMutableArray *const made = [NSMutableArray array];
  for (int i = 0; i < count; ++i) {
    QVBenchActivity *const activity = [[[QVBenchActivity alloc] init] autorelease];
    activity->type = [[NSString alloc]
        initWithFormat:i % 2 ? @"com.example.allowed.%d" : @"com.apple.UIKit.activity.OpenWithApp-org.other.app%d", i];
    [made addObject:activity];
  }
  return made;
}

void Sheet(benchmark::State &state) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  silenceTheLog();
  id const util = [NSClassFromString(@"ZorbelUtil") instance];
  UIActivityViewController *const sheet = [[[UIActivityViewController alloc] initWithActivityItems:@[]
                                                                             applicationActivities:nil] autorelease];
  const auto filtering = [=](int count, int patterns) {
    NSArray *const all = [activities(count) retain];
    return [=] {
      NSAutoreleasePool *const ofTheTurn = [[NSAutoreleasePool alloc] init];
      sdkWithPatterns(patterns);
      NSMutableArray *const list = [NSMutableArray arrayWithArray:all];
      const double taken = processorTime([&] { [sheet arrayByFilteringBlockedActivities:list]; });
      const bool right = [list count] == static_cast<NSUInteger>(count / 2);
      [ofTheTurn drain];
      return right ? taken : -1;
    };
  };
  // Nothing but the questions that have to be asked, of the apps that the types stand for.
  NSArray *const asked = [activities(200) retain];
  for (QVBenchActivity *activity in asked)
    activity->type = [[activity->type stringByReplacingOccurrencesOfString:@"com.apple.UIKit.activity.OpenWithApp-"
                                                                withString:@""] retain];
  const auto questions = [=] {
    NSAutoreleasePool *const ofTheTurn = [[NSAutoreleasePool alloc] init];
    sdkWithPatterns(1000);
    const double taken = processorTime([&] {
      [util mergeExcludedActivityTypes:nil];
      for (QVBenchActivity *activity in asked)
        [util allowsOpenInWithAppId:activity->type];
    });
    [ofTheTurn drain];
    return taken;
  };
  if (filtering(200, 1000)() < 0) {
    state.SkipWithError("the sheet does not hold what it should after filtering");
  } else {
    const bench::Variant variants[] = {{"filter", filtering(200, 1000)},
                                       {"questions", questions},
                                       {"twiceTheActivities", filtering(400, 1000)},
                                       {"twiceThePatterns", filtering(200, 2000)}};
    bench::sideBySide(state, variants);
  }
  [util setZorbel:nil];
  [pool drain];
}

void Menu(benchmark::State &state) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  silenceTheLog();
  sdkWithPatterns(10);
  UITextField *const field = [[[UITextField alloc] initWithFrame:CGRectZero] autorelease];
  UIWindow *const window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  [window makeKeyAndVisible];
  [window addSubview:field];
  [field setText:@"text"];
  [field becomeFirstResponder];
  [field selectAll:nil];
  id const bar = [NSClassFromString(@"UICalloutBar") sharedCalloutBar];
  UIMenuController *const menu = [UIMenuController sharedMenuController];
  NSArray *const items = @[
    [[[UIMenuItem alloc] initWithTitle:@"Shout" action:@selector(copy:)] autorelease],
    [[[UIMenuItem alloc] initWithTitle:@"Whisper" action:@selector(cut:)] autorelease]
  ];
  if ([bar targetForAction:@selector(copy:)] != field || [bar sb_targetForAction:@selector(copy:)] != field) {
    state.SkipWithError("the bar does not find the text field");
  } else {
    constexpr std::size_t kTimes = 2000;
    const auto each = [](auto work) {
      return [work] {
        NSAutoreleasePool *const ofTheTurn = [[NSAutoreleasePool alloc] init];
        const double taken = bench::nanosecondsEach(kTimes, [&] {
          for (std::size_t i = 0; i < kTimes; ++i)
            work();
        });
        [ofTheTurn drain];
        return taken;
      };
    };
    const bench::Variant variants[] = {
        {"target", each([=] { [bar targetForAction:@selector(copy:)]; })},
        {"targetUnhooked", each([=] { [bar sb_targetForAction:@selector(copy:)]; })},
        {"items", each([=] { [menu setMenuItems:items]; })},
        {"itemsUnhooked", each([=] { [menu sb_setMenuItems:items]; })},
    };
    bench::sideBySide(state, variants);
  }
  [field resignFirstResponder];
  [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:nil];
  [pool drain];
}

} // namespace

BENCHMARK(Sheet)->Iterations(15)->Repetitions(11);
BENCHMARK(Menu)->Iterations(20)->Repetitions(11);

BENCHMARK_MAIN();
