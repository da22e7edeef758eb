// What the hooks on UIApplication add to a request for the delegate and to the delivery of an event. The logger is
// silenced: what it costs to write a line is the SDK's affair.
#import <UIKit/UIKit.h>

#include <dlfcn.h>
#include <mach-o/dyld.h>
#include <objc/runtime.h>

#include "SideBySide.hpp"

/// The platform's own methods, once the library is installed.
@interface UIApplication (QVBenchSandbox)
- (id)sb_delegate;
- (void)sb_sendEvent:(UIEvent *)event;
@end

@interface NSObject (QVBenchPolicy)
+ (id)instance;
- (void)setZorbel:(id)zorbel;
@end

@interface QVBenchDelegate : NSObject <UIApplicationDelegate>
@end
@implementation QVBenchDelegate
@end

// Plays an SDK that is ready and has no more to do with an event than to count it.
@interface QVBenchSDK : NSObject {
@public
  BOOL ready;
  long events;
}
@end
@implementation QVBenchSDK
- (BOOL)isReady {
  return ready;
}
- (void)sendEvent:(UIEvent *)event {
  ++events;
}
@end

namespace {

class Pool {
public:
  Pool() : pool_([[NSAutoreleasePool alloc] init]) {}
  ~Pool() { [pool_ drain]; }
  Pool(const Pool &) = delete;
  Pool &operator=(const Pool &) = delete;

private:
  NSAutoreleasePool *pool_;
};

long lines;
void countLine(id, SEL, NSInteger, NSString *, ...) { ++lines; }

/// An app with a delegate that the library has taken over.
struct App {
  App() {
    method_setImplementation(
        class_getClassMethod(NSClassFromString(@"Zorbel"), sel_registerName("wrapperLogAtLevel:format:")),
        reinterpret_cast<IMP>(&countLine));
    application = [[UIApplication alloc] init];
    delegate = [[QVBenchDelegate alloc] init];
    [application setDelegate:delegate];
    sdk = [[QVBenchSDK alloc] init];
    [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:sdk];
    event = [[UIEvent alloc] init];
  }
  UIApplication *application;
  QVBenchDelegate *delegate;
  QVBenchSDK *sdk;
  UIEvent *event;
};

App &app() {
  static App *const only = new App;
  return *only;
}

template <class Work> double measure(std::size_t times, Work work) {
  return bench::nanosecondsEach(times, [&] {
    const Pool pool;
    for (std::size_t i = 0; i < times; ++i)
      work();
  });
}

/// Below `frames` more of the host's own.
[[gnu::noinline]] double below(int frames, const std::function<double()> &work) {
  const double taken = frames > 0 ? below(frames - 1, work) : work();
  asm volatile("");
  return taken;
}

void DelegateRequest(benchmark::State &state) {
  const Pool pool;
  UIApplication *const application = app().application;
  lines = 0;
  const bool answered = [application delegate] == app().delegate && [application sb_delegate] == app().delegate;
  if (!answered || lines != 1) {
    state.SkipWithError("the hook does not run once for a request, or the answer is wrong");
    return;
  }
  constexpr std::size_t requests = 200;
  const auto hooked = [&] { return measure(requests, [&] { benchmark::DoNotOptimize([application delegate]); }); };
  const bench::Variant variants[] = {
      {"unhooked", [&] { return measure(requests, [&] { benchmark::DoNotOptimize([application sb_delegate]); }); }},
      {"hooked", hooked},
      {"hookedDeep", [&] { return below(50, hooked); }},
      {"callStack",
       [&] { return measure(requests, [] { benchmark::DoNotOptimize([NSThread callStackReturnAddresses]); }); }},
      {"image",
       [&] {
         return measure(requests, [] {
           Dl_info information;
           dladdr(reinterpret_cast<const void *>(&measure<void (*)()>), &information);
           benchmark::DoNotOptimize(information.dli_fbase == _dyld_get_image_header(0));
         });
       }},
  };
  bench::sideBySide(state, variants);
}

void EventDelivery(benchmark::State &state) {
  const Pool pool;
  UIApplication *const application = app().application;
  QVBenchSDK *const sdk = app().sdk;
  UIEvent *const event = app().event;
  sdk->ready = YES;
  sdk->events = 0;
  [application sendEvent:event];
  [application sb_sendEvent:event];
  if (sdk->events != 1) {
    state.SkipWithError("the hook does not run once for an event");
    return;
  }
  constexpr std::size_t events = 2000;
  const auto hooked = [&](BOOL ready) {
    sdk->ready = ready;
    return measure(events, [&] { [application sendEvent:event]; });
  };
  const bench::Variant variants[] = {
      {"unhooked", [&] { return measure(events, [&] { [application sb_sendEvent:event]; }); }},
      {"hooked", [&] { return hooked(YES); }},
      {"hookedNotReady", [&] { return hooked(NO); }},
  };
  bench::sideBySide(state, variants);
}

} // namespace

BENCHMARK(DelegateRequest)->Iterations(50)->Repetitions(7);
BENCHMARK(EventDelivery)->Iterations(50)->Repetitions(7);

BENCHMARK_MAIN();
