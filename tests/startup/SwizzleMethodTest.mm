// swizzleMethod: grafting a method of ZBWrappedApplicationDelegate onto a host's class.
#include "support/Support.h"

#include <objc/runtime.h>

#include <gtest/gtest.h>

extern "C" void swizzleMethod(Class cls, SEL original, SEL replacement);

namespace {
NSString *graftedName(id self, SEL) {
  NSString *own = [self respondsToSelector:sel_registerName("zb_test_name")]
                      ? [self performSelector:sel_registerName("zb_test_name")]
                      : @"nothing of its own";
  return [NSString stringWithFormat:@"grafted over %@", own];
}

/// Gives ZBWrappedApplicationDelegate, which it makes where there is none yet, a replacement to graft.
void addReplacement() {
  Class cls = objc_getClass("ZBWrappedApplicationDelegate");
  if (!cls) {
    cls = objc_allocateClassPair([NSObject class], "ZBWrappedApplicationDelegate", 0);
    objc_registerClassPair(cls);
  }
  class_addMethod(cls, sel_registerName("zb_test_name"), reinterpret_cast<IMP>(&graftedName), "@16@0:8");
}
} // namespace

@interface QVHostWithName : NSObject
@end
@implementation QVHostWithName
- (NSString *)test_name {
  return @"host";
}
@end

@interface QVHostBelow : QVHostWithName
@end
@implementation QVHostBelow
@end

@interface QVHostWithoutName : NSObject
@end
@implementation QVHostWithoutName
@end

@interface QVHostWithOddName : NSObject
@end
@implementation QVHostWithOddName
- (int)test_name {
  return 3;
}
@end

namespace {

class SwizzleMethod : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    addReplacement();
    support::clearLog();
  }
  void TearDown() override { [pool drain]; }
  static std::string nameOf(Class cls) {
    return support::text([[[[cls alloc] init] autorelease] performSelector:original]);
  }
  NSAutoreleasePool *pool;
  static inline const SEL original = sel_registerName("test_name");
  static inline const SEL replacement = sel_registerName("zb_test_name");
};

using Lines = std::vector<std::string>;

} // namespace

TEST_F(SwizzleMethod, OntoAClassWithTheMethodPutsTheReplacementInFrontOfIt) {
  swizzleMethod([QVHostWithName class], original, replacement);
  EXPECT_EQ(nameOf([QVHostWithName class]), "grafted over host");
  EXPECT_EQ(support::log(), (Lines{"5 Swizzling test_name with zb_test_name with type @16@0:8 for Class QVHostWithName",
                                   "5 Original method exists. Swapped implementation with error: (null)"}));
}

TEST_F(SwizzleMethod, OntoASubclassOfTheOneWithTheMethodLeavesTheSuperclassAlone) {
  swizzleMethod([QVHostBelow class], original, replacement);
  EXPECT_EQ(nameOf([QVHostBelow class]), "grafted over host");
  EXPECT_EQ(nameOf([QVHostWithName class]), "host");
}

TEST_F(SwizzleMethod, OntoAClassWithoutTheMethodAddsItUnderTheHostsNameOnly) {
  swizzleMethod([QVHostWithoutName class], original, replacement);
  EXPECT_EQ(nameOf([QVHostWithoutName class]), "grafted over nothing of its own");
  EXPECT_FALSE([QVHostWithoutName instancesRespondToSelector:replacement]);
  EXPECT_EQ(support::log(),
            (Lines{"5 Swizzling test_name with zb_test_name with type @16@0:8 for Class QVHostWithoutName",
                   "5 Original method does not exist. Adding implementation with original selector."}));
}

TEST_F(SwizzleMethod, WithAReplacementThatIsNotImplementedLogsItAndChangesNothing) {
  swizzleMethod([QVHostWithName class], original, sel_registerName("zb_not_there:"));
  EXPECT_EQ(nameOf([QVHostWithName class]), "host");
  EXPECT_EQ(support::log(), (Lines{"0 Missing implementation for zb_not_there:"}));
}

TEST_F(SwizzleMethod, WithAReplacementThatHasNoEncodingLogsItAndChangesNothing) {
  const SEL untyped = support::addMethodWithoutEncoding(objc_getClass("ZBWrappedApplicationDelegate"), "zb_untyped");
  swizzleMethod([QVHostWithName class], original, untyped);
  EXPECT_EQ(nameOf([QVHostWithName class]), "host");
  EXPECT_EQ(support::log(), (Lines{"0 Malformed implementation for zb_untyped"}));
}

TEST_F(SwizzleMethod, OverAMethodOfAnotherSignatureLogsTheErrorAndLeavesTheHostsMethod) {
  swizzleMethod([QVHostWithOddName class], original, replacement);
  const std::vector<std::string> lines = support::log();
  ASSERT_EQ(lines.size(), 2u);
  const std::string start = "5 Original method exists. Swapped implementation with error: ";
  EXPECT_EQ(lines[1].substr(0, start.size()), start);
  EXPECT_NE(lines[1].find("alternative type encoding for selector zb_test_name does not match original test_name in "
                          "class QVHostWithOddName"),
            std::string::npos);
  const Method method = class_getInstanceMethod([QVHostWithOddName class], original);
  EXPECT_STREQ(method_getTypeEncoding(method), "i16@0:8");
  EXPECT_NE(method_getImplementation(method), reinterpret_cast<IMP>(&graftedName));
}
