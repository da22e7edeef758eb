// What the protection of a file adds to writing it.
#import "Writing.h"

#include <array>
#include <chrono>
#include <vector>

#import "Foundation/DataProtection.h"
#include "SideBySide.hpp"

namespace {

using bench::Writing;

NSString *const raisedClass = @"NSFileProtectionCompleteUntilFirstUserAuthentication";

class Pool {
public:
  Pool() : pool_([[NSAutoreleasePool alloc] init]) {}
  ~Pool() { [pool_ drain]; }
  Pool(const Pool &) = delete;
  Pool &operator=(const Pool &) = delete;

private:
  NSAutoreleasePool *pool_;
};

/// An app's run loop empties a pool each time around; what the writes leave in it belongs to their cost.
double measure(const Writing &file, BOOL (Writing::*write)() const) {
  return bench::nanosecondsEach(1, [&] {
    const Pool pool;
    benchmark::DoNotOptimize((file.*write)());
  });
}

/// Whether the write succeeds and leaves the file with that class.
bool leaves(const Writing &file, BOOL (Writing::*write)() const, NSString *protectionClass) {
  const Pool pool;
  return (file.*write)() && [bench::storedClass(file.cPath()) isEqualToString:protectionClass];
}

void HookedWrite(benchmark::State &state) {
  const Pool pool;
  const Writing alone(@"alone"), bare(@"bare"), byHand(@"by hand"), hooked(@"hooked");
  if (!leaves(alone, &Writing::alone, @"") || !leaves(bare, &Writing::bare, raisedClass) ||
      !leaves(byHand, &Writing::byHand, raisedClass) || !leaves(hooked, &Writing::hooked, raisedClass)) {
    state.SkipWithError("a write did not leave the file with the class that it should");
    return;
  }
  const bench::Variant variants[] = {
      {"alone", [&] { return measure(alone, &Writing::alone); }},
      {"bare", [&] { return measure(bare, &Writing::bare); }},
      {"byHand", [&] { return measure(byHand, &Writing::byHand); }},
      {"hooked", [&] { return measure(hooked, &Writing::hooked); }},
  };
  bench::sideBySide(state, variants);
}

/// What follows the write, alone: the library's part against the same Foundation calls. The writes are not timed.
void Raise(benchmark::State &state) {
  const Pool pool;
  const Writing byHand(@"raised by hand"), hooked(@"raised");
  NSFileManager *const fileManager = [NSFileManager defaultManager];
  const auto raise = [](const Writing &file, auto &&raised) {
    const Pool ofTheWrite;
    file.alone();
    return bench::nanosecondsEach(1, [&] {
      const Pool ofTheRaise;
      raised();
    });
  };
  const bench::Variant variants[] = {
      {"byHand", [&] { return raise(byHand, [&] { byHand.raiseByHand(); }); }},
      {"hooked", [&] { return raise(hooked, [&] { [fileManager forceFileProtectionForItemAtPath:hooked.path()]; }); }},
  };
  for (const bench::Variant &variant : variants)
    variant.measure();
  if (![bench::storedClass(byHand.cPath()) isEqualToString:raisedClass] ||
      ![bench::storedClass(hooked.cPath()) isEqualToString:raisedClass]) {
    state.SkipWithError("the class was not raised");
    return;
  }
  bench::sideBySide(state, variants);
}

/// The write by hand with the clock read after each step.
void Breakdown(benchmark::State &state) {
  using Clock = std::chrono::steady_clock;
  constexpr std::array steps = {"write", "exists", "attributes", "decide", "copy", "set", "release"};
  std::array<std::vector<double>, steps.size()> taken;
  const Pool outer;
  const Writing file(@"steps");
  NSFileManager *const fileManager = [NSFileManager defaultManager];

  for ([[maybe_unused]] auto iteration : state) {
    std::array<Clock::time_point, steps.size() + 1> at;
    auto *const pool = [[NSAutoreleasePool alloc] init];
    at[0] = Clock::now();
    BOOL well = file.alone();
    at[1] = Clock::now();
    well = well && [fileManager fileExistsAtPath:file.path()];
    at[2] = Clock::now();
    NSDictionary *const attributes = [fileManager attributesOfItemAtPath:file.path() error:NULL];
    at[3] = Clock::now();
    NSString *const protection = [attributes valueForKey:NSFileProtectionKey];
    well = well && (!protection || [NSFileProtectionNone isEqual:protection]);
    at[4] = Clock::now();
    NSMutableDictionary *const raised = [attributes mutableCopy];
    [raised setObject:NSFileProtectionCompleteUntilFirstUserAuthentication forKey:NSFileProtectionKey];
    at[5] = Clock::now();
    well = well && [fileManager sb_setAttributes:raised ofItemAtPath:file.path() error:NULL];
    at[6] = Clock::now();
    [raised release];
    [pool drain];
    at[7] = Clock::now();
    if (!well) {
      state.SkipWithError("a step failed");
      return;
    }
    for (std::size_t i = 0; i < steps.size(); ++i)
      taken[i].push_back(std::chrono::duration<double, std::nano>(at[i + 1] - at[i]).count());
  }
  for (std::size_t i = 0; i < steps.size(); ++i)
    state.counters[steps[i]] = bench::median(taken[i]);
}

/// What the device does for the class alone, below Foundation's dictionaries, against the bare calls; the writes
/// between are not timed.
void DataProtection(benchmark::State &state) {
  const Pool pool;
  const Writing devices(@"device"), bare(@"bare calls");
  const auto throughDevice = [&] {
    const char *const path = devices.cPath();
    devices.alone();
    return bench::nanosecondsEach(1, [&] {
      if (!qvdevice::storedProtection(path))
        qvdevice::storeProtection(path, NSFileProtectionCompleteUntilFirstUserAuthentication);
    });
  };
  const auto throughBareCalls = [&] {
    const char *const path = bare.cPath();
    bare.alone();
    return bench::nanosecondsEach(1, [&] { bench::raiseWithBareCalls(path); });
  };
  throughDevice();
  throughBareCalls();
  if (![bench::storedClass(devices.cPath()) isEqualToString:raisedClass] ||
      ![bench::storedClass(bare.cPath()) isEqualToString:raisedClass]) {
    state.SkipWithError("the class was not stored");
    return;
  }
  const bench::Variant variants[] = {{"device", throughDevice}, {"bare", throughBareCalls}};
  bench::sideBySide(state, variants);
}

} // namespace

BENCHMARK(HookedWrite)->Iterations(400)->Repetitions(11);
BENCHMARK(Raise)->Iterations(400)->Repetitions(11);
BENCHMARK(Breakdown)->Iterations(400)->Repetitions(5);
BENCHMARK(DataProtection)->Iterations(400)->Repetitions(11);

BENCHMARK_MAIN();
