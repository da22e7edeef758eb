// What a call through a hook costs: with the library's binding, with the runtime's functions by hand, by message
// forwarding, and not hooked at all.
#import <Foundation/Foundation.h>

#include "HookCall.h"
#include "SideBySide.hpp"

@interface QVBenchWriter : NSObject
- (BOOL)writeFile:(NSString *)path atomically:(BOOL)atomically;
@end
@implementation QVBenchWriter
- (BOOL)writeFile:(NSString *)path atomically:(BOOL)atomically {
  return path != nil && atomically;
}
@end

@interface QVBenchHookedWriter : QVBenchWriter
@end
@implementation QVBenchHookedWriter
@end

@interface QVBenchHandHookedWriter : QVBenchWriter
@end
@implementation QVBenchHandHookedWriter
@end

/// The other usual way to hook: whoever holds this object takes it for the writer.
@interface QVBenchForwarder : NSProxy {
@private
  QVBenchWriter *_writer;
  unsigned long _seen;
}
- (instancetype)initWithWriter:(QVBenchWriter *)writer;
- (unsigned long)seen;
@end
@implementation QVBenchForwarder
- (instancetype)initWithWriter:(QVBenchWriter *)writer {
  _writer = [writer retain];
  return self;
}
- (void)dealloc {
  [_writer release];
  [super dealloc];
}
- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector {
  return [_writer methodSignatureForSelector:selector];
}
- (void)forwardInvocation:(NSInvocation *)invocation {
  [invocation invokeWithTarget:_writer];
  BOOL written = NO;
  [invocation getReturnValue:&written];
  if (written) ++_seen;
}
- (unsigned long)seen {
  return _seen;
}
@end

namespace {

constexpr std::size_t callsInATurn = 20000;
constexpr std::size_t forwardedCallsInATurn = 200;

/// The one call site of all ways: what differs is the receiver alone.
[[gnu::noinline]] unsigned long call(id writer, std::size_t times) {
  NSString *const path = @"Documents/note.txt";
  unsigned long written = 0;
  for (std::size_t i = 0; i < times; ++i)
    written += [(QVBenchWriter *)writer writeFile:path atomically:YES];
  return written;
}

double measure(id writer, std::size_t times) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  const double taken = bench::nanosecondsEach(times, [&] { benchmark::DoNotOptimize(call(writer, times)); });
  [pool drain];
  return taken;
}

/// Why the times would mean nothing, or null: each way must reach the method, and its replacement must run.
const char *check(id plain, id byHand, id byUs, QVBenchForwarder *forwarding) {
  if (call(plain, 10) != 10 || call(byHand, 10) != 10 || call(byUs, 10) != 10 || call(forwarding, 10) != 10)
    return "a call did not reach the method";
  if (benchSeenByHand != 10) return "the replacement installed by hand did not run";
  if (benchSeenByUs != 10) return "the replacement installed with the binding did not run";
  if ([forwarding seen] != 10) return "the forwarder did not see the calls";
  return nullptr;
}

void HookCall(benchmark::State &state) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  id const plain = [[[QVBenchWriter alloc] init] autorelease];
  id const byHand = [[[QVBenchHandHookedWriter alloc] init] autorelease];
  id const byUs = [[[QVBenchHookedWriter alloc] init] autorelease];
  QVBenchForwarder *const forwarding = [[[QVBenchForwarder alloc] initWithWriter:plain] autorelease];
  benchSeenByHand = benchSeenByUs = 0;
  if (const char *const reason = check(plain, byHand, byUs, forwarding)) {
    state.SkipWithError(reason);
  } else {
    const bench::Variant variants[] = {
        {"unhooked", [=] { return measure(plain, callsInATurn); }},
        {"byHand", [=] { return measure(byHand, callsInATurn); }},
        {"hooked", [=] { return measure(byUs, callsInATurn); }},
        {"forwarded", [=] { return measure(forwarding, forwardedCallsInATurn); }},
    };
    bench::sideBySide(state, variants);
  }
  [pool drain];
}

} // namespace

BENCHMARK(HookCall)->Iterations(100)->Repetitions(31);

int main(int argc, char **argv) {
  benchHookByHand();
  benchHookByUs();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 64;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
