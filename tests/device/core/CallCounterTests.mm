// Counted calls: what is called must not notice.
#include "observation/CallCounters.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>
#include <unwind.h>

#import <Foundation/Foundation.h>

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Pool.h"

namespace {

using namespace qvdevice;

struct Large {
  double numbers[6];
};
struct Small {
  long whole;
  double part;
};

IMP implementation(void *function) { return reinterpret_cast<IMP>(function); }

/// A function with a counter before it, to be called by its own type.
template <class Function> Function *counting(Function *function, int *counter = nullptr) {
  const CountedCall call = counted(implementation(reinterpret_cast<void *>(function)));
  if (counter) *counter = call.counter;
  EXPECT_NE(reinterpret_cast<void *>(call.implementation), reinterpret_cast<void *>(function));
  return reinterpret_cast<Function *>(reinterpret_cast<void *>(call.implementation));
}

class CountedCalls : public PoolTest {
protected:
  void SetUp() override {
    const int descriptor = memfd_create("counters", MFD_CLOEXEC);
    ASSERT_EQ(ftruncate(descriptor, 65536), 0);
    counters = static_cast<const std::uint64_t *>(mmap(nullptr, 65536, PROT_READ, MAP_SHARED, descriptor, 0));
    ASSERT_TRUE(countCallsIn(descriptor));
    close(descriptor);
  }

  const std::uint64_t *counters = nullptr;
};

long integers(long a, long b, long c, long d, long e, long f, long g, long h, long i, long j) {
  return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h + 9 * i + 10 * j;
}

double mixed(int a, double b, float c, double d, long e, double f, double g, double h, double i, double j, double k) {
  return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h + 9 * i + 10 * j + 11 * k;
}

Large large(double first, int second) { return {{first, 1, 2, 3, 4, static_cast<double>(second)}}; }
Small small(long whole, double part) { return {whole + 1, part * 2}; }
long double wide(long double value) { return value * 3; }

double sum(int count, ...) {
  va_list arguments;
  va_start(arguments, count);
  double total = 0;
  for (int i = 0; i < count; ++i)
    total += va_arg(arguments, double);
  va_end(arguments);
  return total;
}

__attribute__((noinline)) void *whereItReturns() { return __builtin_return_address(0); }

void raiseNumber(int number) { [NSException raise:NSGenericException format:@"%d", number]; }

std::atomic<int> calls{0};
void call() { ++calls; }
void doNothing() {}

std::uintptr_t stackPointerOfCaller;
std::uintptr_t returnAddress;
_Unwind_Reason_Code rememberFrame(_Unwind_Context *context, void *) {
  if (_Unwind_GetIP(context) != returnAddress) return _URC_NO_REASON;
  stackPointerOfCaller = _Unwind_GetCFA(context);
  return _URC_END_OF_STACK;
}
__attribute__((noinline)) void remember() {
  returnAddress = reinterpret_cast<std::uintptr_t>(__builtin_return_address(0));
  _Unwind_Backtrace(rememberFrame, nullptr);
}
using Plain = void();
Plain *remembering;
/// Its last act is to call another, so that it leaves no frame.
__attribute__((noinline)) void passOn() {
  ++calls;
  [[clang::musttail]] return remembering();
}

} // namespace

TEST_F(CountedCalls, ArriveWithAllArgumentsAndReturnWhatIsReturned) {
  EXPECT_EQ(counting(integers)(1, 2, 3, 4, 5, 6, 7, 8, 9, 10), 385);
  EXPECT_EQ(counting(mixed)(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11), 506);
  EXPECT_EQ(counting(sum)(4, 0.5, 1.5, 2.0, 4.0), 8);
  EXPECT_EQ(counting(wide)(2.5L), 7.5L);
}

TEST_F(CountedCalls, ReturnStructures) {
  const Large result = counting(large)(7, 9);
  EXPECT_EQ(result.numbers[0], 7);
  EXPECT_EQ(result.numbers[5], 9);
  const Small other = counting(small)(4, 1.5);
  EXPECT_EQ(other.whole, 5);
  EXPECT_EQ(other.part, 3);
}

TEST_F(CountedCalls, AreCountedEachByItself) {
  int first = -1;
  int second = -1;
  const auto one = counting(call, &first);
  const auto other = counting(call, &second);
  one();
  one();
  one();
  other();
  EXPECT_NE(first, second);
  EXPECT_EQ(counters[first], 3u);
  EXPECT_EQ(counters[second], 1u);
  EXPECT_EQ(calls, 4);
}

TEST_F(CountedCalls, ReturnToWhoeverCalled) {
  // Not into the device, and not by way of it.
  const auto where = counting(whereItReturns);
  void *const place = where();
  Dl_info image;
  Dl_info own;
  ASSERT_NE(dladdr(place, &image), 0);
  ASSERT_NE(dladdr(reinterpret_cast<void *>(&integers), &own), 0);
  EXPECT_EQ(image.dli_fbase, own.dli_fbase);
}

TEST_F(CountedCalls, LetExceptionsPass) {
  int counter = -1;
  const auto raising = counting(raiseNumber, &counter);
  NSString *caught = nil;
  @try {
    raising(42);
  } @catch (NSException *exception) {
    caught = [exception reason];
  }
  EXPECT_TRUE([caught isEqual:@"42"]);
  EXPECT_EQ(counters[counter], 1u);
}

TEST_F(CountedCalls, OfManyThreadsAreAllCounted) {
  int counter = -1;
  const auto counted = counting(doNothing, &counter);
  // All at once: one that has ended before the next begins disturbs nobody.
  std::atomic<int> waiting{4};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([&] {
      --waiting;
      while (waiting > 0)
        std::this_thread::yield();
      for (int n = 0; n < 2000000; ++n)
        counted();
    });
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_EQ(counters[counter], 8000000u);
}

TEST_F(CountedCalls, LeadToTheirImplementation) {
  const auto counted = counting(call);
  const IMP stub = implementation(reinterpret_cast<void *>(counted));
  EXPECT_EQ(uncounted(stub), implementation(reinterpret_cast<void *>(call)));
  EXPECT_EQ(uncounted(implementation(reinterpret_cast<void *>(call))), implementation(reinterpret_cast<void *>(call)));
}

TEST_F(CountedCalls, AreUncountedWhenThereAreNoMoreCounters) {
  std::set<int> taken;
  for (int i = 0; i < 128; ++i)
    taken.insert(counted(implementation(reinterpret_cast<void *>(call))).counter);
  EXPECT_EQ(taken.size(), 128u);
  EXPECT_EQ(*taken.begin(), 0);
  EXPECT_EQ(*taken.rbegin(), 127);
  const CountedCall more = counted(implementation(reinterpret_cast<void *>(call)));
  EXPECT_EQ(more.counter, -1);
  EXPECT_EQ(more.implementation, implementation(reinterpret_cast<void *>(call)));
}

TEST_F(CountedCalls, AreRecognisedByReturnAddressAndStack) {
  int counter = -1;
  counting(remember, &counter)();
  EXPECT_EQ(counterOfCall(returnAddress, stackPointerOfCaller), counter);
  EXPECT_EQ(counterOfCall(returnAddress + 1, stackPointerOfCaller), -1);
  EXPECT_EQ(counterOfCall(returnAddress, stackPointerOfCaller + 16), -1);
}

TEST_F(CountedCalls, ThatPassedOnInTheirLastActAreRecognisedUnlessWhatTheyCalledWasCountedToo) {
  int passing = -1;
  remembering = remember;
  const auto passingOn = counting(passOn, &passing);
  passingOn();
  EXPECT_EQ(counterOfCall(returnAddress, stackPointerOfCaller), passing);
  int last = -1;
  remembering = counting(remember, &last);
  passingOn();
  EXPECT_EQ(counterOfCall(returnAddress, stackPointerOfCaller), last);
}

TEST_F(CountedCalls, OfOtherThreadsAreNotRecognised) {
  counting(remember)();
  int found = 0;
  std::thread([&] { found = counterOfCall(returnAddress, stackPointerOfCaller); }).join();
  EXPECT_EQ(found, -1);
}

TEST(UncountedCalls, StayWhatTheyAre) {
  const CountedCall call = counted(implementation(reinterpret_cast<void *>(integers)));
  EXPECT_EQ(call.counter, -1);
  EXPECT_EQ(call.implementation, implementation(reinterpret_cast<void *>(integers)));
  EXPECT_FALSE(areCallsCounted());
}
