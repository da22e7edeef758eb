// Texts of the SDK's states and policies, and the entry points that do nothing.
#include "Util.h"

#include <limits>

#include <gtest/gtest.h>

using support::text;

namespace {

constexpr NSInteger kLeast = std::numeric_limits<NSInteger>::min();
constexpr NSInteger kGreatest = std::numeric_limits<NSInteger>::max();
// What is left of it in 32 bits would be a known value.
constexpr NSInteger kTwoTo32 = NSInteger(1) << 32;

class StateTexts : public testing::Test {
protected:
  void SetUp() override { pool = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override { [pool drain]; }
  NSAutoreleasePool *pool;
};

TEST_F(StateTexts, ofAuthorisationStates) {
  EXPECT_EQ(text([util() stringForAuthState:0]), "Unauthorized");
  EXPECT_EQ(text([util() stringForAuthState:1]), "Authorized");
  EXPECT_EQ(text([util() stringForAuthState:2]), "Retired");
  for (const NSInteger unknown : {NSInteger(3), NSInteger(-1), kTwoTo32, kLeast, kGreatest})
    EXPECT_EQ(text([util() stringForAuthState:unknown]), "Unknown Auth State") << unknown;
}

TEST_F(StateTexts, ofOpenInPolicies) {
  EXPECT_EQ(text([util() stringForOpenInPolicy:0]), "Unauthorized");
  EXPECT_EQ(text([util() stringForOpenInPolicy:1]), "Authorized");
  EXPECT_EQ(text([util() stringForOpenInPolicy:2]), "Whitelist");
  for (const NSInteger unknown : {NSInteger(3), NSInteger(-1), kTwoTo32, kLeast, kGreatest})
    EXPECT_EQ(text([util() stringForOpenInPolicy:unknown]), "Unknown OpenIn State") << unknown;
}

TEST_F(StateTexts, ofPrintPoliciesWhichHaveNoThirdValue) {
  EXPECT_EQ(text([util() stringForPrintPolicy:0]), "Unauthorized");
  EXPECT_EQ(text([util() stringForPrintPolicy:1]), "Authorized");
  for (const NSInteger unknown : {NSInteger(2), NSInteger(3), NSInteger(-1), kTwoTo32, kLeast, kGreatest})
    EXPECT_EQ(text([util() stringForPrintPolicy:unknown]), "Unknown Print State") << unknown;
}

TEST_F(StateTexts, ofPasteboardPolicies) {
  EXPECT_EQ(text([util() stringForPasteboardPolicy:0]), "Unauthorized");
  EXPECT_EQ(text([util() stringForPasteboardPolicy:1]), "Authorized");
  EXPECT_EQ(text([util() stringForPasteboardPolicy:2]), "Secure Copy");
  for (const NSInteger unknown : {NSInteger(3), NSInteger(-1), kTwoTo32, kLeast, kGreatest})
    EXPECT_EQ(text([util() stringForPasteboardPolicy:unknown]), "Unknown Pasteboard State") << unknown;
}

TEST_F(StateTexts, areConstantsAndNotMadeAnewForEachCall) {
  EXPECT_EQ([util() stringForAuthState:2], [util() stringForAuthState:2]);
  EXPECT_EQ([util() stringForPrintPolicy:7], [util() stringForPrintPolicy:8]);
  NSString *const kept = [util() stringForOpenInPolicy:2];
  [pool drain];
  pool = [[NSAutoreleasePool alloc] init];
  EXPECT_EQ(text(kept), "Whitelist");
}

TEST(SilentEntryPoints, takeTheirArgumentAndLogNothing) {
  support::clearLog();
  [util() logClass:[NSObject class]];
  [util() logMessagesForClass:[NSObject class]];
  [util() logHierarchyForClass:[NSObject class]];
  [util() logVariablesForClass:[NSObject class]];
  [util() logSymbolInfo:reinterpret_cast<const void *>(&text)];
  [util() logClass:Nil];
  [util() logMessagesForClass:Nil];
  [util() logHierarchyForClass:Nil];
  [util() logVariablesForClass:Nil];
  [util() logSymbolInfo:nullptr];
  EXPECT_EQ(support::log(), std::vector<std::string>());
}

TEST(Util, isAClassBelowNSObjectWhoseClassMethodsHaveTheCompilersEncodings) {
  EXPECT_EQ(class_getSuperclass(util()), [NSObject class]);
  const auto encoding = [](SEL selector) {
    return std::string(method_getTypeEncoding(class_getClassMethod(util(), selector)));
  };
  EXPECT_EQ(encoding(@selector(stringForAuthState:)), "@24@0:8q16");
  EXPECT_EQ(encoding(@selector(stringForTypeEncoding:)), "@24@0:8r*16");
  EXPECT_EQ(encoding(@selector(logMethods:count:withPrefix:)), "v36@0:8^^{objc_method}16I24@28");
  EXPECT_EQ(encoding(@selector(logClassFromString:)), "v24@0:8r*16");
  EXPECT_EQ(encoding(@selector(logClass:)), "v24@0:8#16");
  EXPECT_EQ(encoding(@selector(logSymbolInfo:)), "v24@0:8r^v16");
}

} // namespace
