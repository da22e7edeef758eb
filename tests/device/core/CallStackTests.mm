// Who called: return addresses as numbers, and the images that they lie in.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <mach-o/dyld.h>
#include <objc/runtime.h>
#include <unistd.h>

#import <Foundation/Foundation.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "Pool.h"

@protocol CallStackSample
- (id)answer;
@end

namespace {

class CallStack : public PoolTest {};

struct Answer {
  NSArray *addresses;
  std::uintptr_t returnAddress;
};

// A frame of its own each, whatever the optimiser thinks of it; the assembly keeps the calls from becoming jumps.
[[gnu::noinline]] Answer asked() {
  NSArray *const addresses = [NSThread callStackReturnAddresses];
  const Answer answer{addresses, reinterpret_cast<std::uintptr_t>(__builtin_return_address(0))};
  asm volatile("");
  return answer;
}

[[gnu::noinline]] Answer askedByAnother(std::uintptr_t &returnAddress) {
  const Answer answer = asked();
  returnAddress = reinterpret_cast<std::uintptr_t>(__builtin_return_address(0));
  asm volatile("");
  return answer;
}

std::uintptr_t at(NSArray *addresses, NSUInteger index) { return [[addresses objectAtIndex:index] unsignedLongValue]; }

TEST_F(CallStack, IsAnArrayOfNumbers) {
  NSArray *const addresses = [NSThread callStackReturnAddresses];
  ASSERT_GT([addresses count], 2U);
  for (id address in addresses)
    EXPECT_TRUE([address isKindOfClass:[NSNumber class]]);
}

TEST_F(CallStack, BeginsInTheFunctionThatAskedAndGoesOnInItsCaller) {
  std::uintptr_t outerReturn = 0;
  const Answer answer = askedByAnother(outerReturn);
  ASSERT_GT([answer.addresses count], 3U);
  const auto askedFunction = reinterpret_cast<std::uintptr_t>(&asked);
  EXPECT_GT(at(answer.addresses, 0), askedFunction);
  EXPECT_LT(at(answer.addresses, 0), askedFunction + 4096);
  EXPECT_EQ(at(answer.addresses, 1), answer.returnAddress);
  EXPECT_EQ(at(answer.addresses, 2), outerReturn);
}

NSArray *seenByReplacement;

id replacement(id, SEL) {
  seenByReplacement = [NSThread callStackReturnAddresses];
  asm volatile("");
  return nil;
}

// How a replaced method finds out who sent the message: element 1.
TEST_F(CallStack, InAReplacedMethodHasTheSenderAtIndexOne) {
  const Class sample = objc_allocateClassPair([NSObject class], "CallStackSample", 0);
  class_addMethod(sample, @selector(answer), reinterpret_cast<IMP>(reinterpret_cast<void *>(&replacement)), "@16@0:8");
  objc_registerClassPair(sample);
  id const object = [[[sample alloc] init] autorelease];
  // Foundation sends it.
  [@[ object ] makeObjectsPerformSelector:@selector(answer)];
  Dl_info sender{};
  ASSERT_NE(::dladdr(reinterpret_cast<void *>(at(seenByReplacement, 1)), &sender), 0);
  EXPECT_NE(std::string(sender.dli_fname).find("libgnustep-base"), std::string::npos);
  // This test does.
  [static_cast<id<CallStackSample>>(object) answer];
  ASSERT_NE(::dladdr(reinterpret_cast<void *>(at(seenByReplacement, 1)), &sender), 0);
  EXPECT_EQ(sender.dli_fbase, _dyld_get_image_header(0));
}

TEST_F(CallStack, OfADeepRecursionEndsWithoutHarm) {
  struct Recursion {
    static NSArray *go(int depth) {
      NSArray *const answer = depth == 0 ? [NSThread callStackReturnAddresses] : go(depth - 1);
      asm volatile("");
      return answer;
    }
  };
  EXPECT_GE([Recursion::go(2000) count], 500U);
}

TEST(Images, BeginWithTheExecutable) {
  Dl_info information{};
  ASSERT_NE(::dladdr(reinterpret_cast<void *>(&asked), &information), 0);
  EXPECT_EQ(static_cast<const void *>(_dyld_get_image_header(0)), information.dli_fbase);
  char path[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
  EXPECT_EQ(_dyld_get_image_name(0), std::string(path, static_cast<std::size_t>(length)));
}

TEST(Images, AreAllFoundByTheAddressThatTheyAreListedWith) {
  const std::uint32_t count = _dyld_image_count();
  ASSERT_GT(count, 3U);
  bool foundation = false;
  for (std::uint32_t i = 0; i < count; ++i) {
    Dl_info information{};
    ASSERT_NE(::dladdr(_dyld_get_image_header(i), &information), 0) << _dyld_get_image_name(i);
    EXPECT_EQ(static_cast<const void *>(_dyld_get_image_header(i)), information.dli_fbase) << _dyld_get_image_name(i);
    foundation = foundation || std::string(_dyld_get_image_name(i)).find("libgnustep-base") != std::string::npos;
  }
  EXPECT_TRUE(foundation);
}

TEST(Images, BeyondTheLastAreNull) {
  EXPECT_EQ(_dyld_get_image_header(_dyld_image_count()), nullptr);
  EXPECT_EQ(_dyld_get_image_name(_dyld_image_count()), nullptr);
}

} // namespace
