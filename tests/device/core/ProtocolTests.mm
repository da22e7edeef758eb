// Protocols that no class adopts.

#include <gtest/gtest.h>
#include <objc/runtime.h>

#import <Foundation/Foundation.h>

#include <string>

@protocol QVTestAdoptedByNobody <NSObject>
- (void)take:(int)number;
@end

namespace {

// What a module mentions in its declarations is enough for the compiler to put it there.
[[maybe_unused]] id<QVTestAdoptedByNobody> nobody = nil;

// Nothing in this program mentions it.
Protocol *const ofTheDevice = objc_getProtocol("UIApplicationDelegate");

TEST(Protocols, ThatNoClassAdoptsAreKnown) {
  Protocol *const found = NSProtocolFromString(@"QVTestAdoptedByNobody");
  ASSERT_TRUE(found != nil);
  EXPECT_STREQ(protocol_getName(found), "QVTestAdoptedByNobody");
  EXPECT_STREQ(protocol_getMethodDescription(found, @selector(take:), YES, YES).types, "v20@0:8i16");
}

TEST(Protocols, OfTheDeviceAreKnownBeforeTheProgramsOwnInitialisers) { EXPECT_TRUE(ofTheDevice != nil); }

} // namespace
