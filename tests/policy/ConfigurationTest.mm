// SBZorbelConfigHelper: the library's own keys inside the SDK's configuration.
#include "support/Support.h"

#include <objc/runtime.h>

#import <Zorbel/QVDevicePolicies.h>
#import <Zorbel/Zorbel.h>

#include <gtest/gtest.h>

@interface NSObject (SBZorbelConfigHelper)
+ (BOOL)boolValueForKey:(NSString *)key;
+ (BOOL)isLogCapturingEnabled;
+ (BOOL)isKeyboardDictationAllowed;
+ (NSMutableDictionary *)filteredZorbelConfig;
+ (NSMutableDictionary *)filteredConfigFromConfig:(NSDictionary *)config;
@end

// An object that is neither a number nor a string and yet has a truth value.
@interface QVTruthful : NSObject
@end
@implementation QVTruthful
- (BOOL)boolValue {
  return YES;
}
@end

namespace {

Class helper() { return objc_getClass("SBZorbelConfigHelper"); }

NSString *const kLogCapture = @"QV_ZB_WR_ENABLE_LOG_CAPTURE";
NSString *const kDictation = @"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION";

NSDictionary *config = nil;
int configAsked = 0;
NSDictionary *answerConfig(id, SEL) {
  ++configAsked;
  return config;
}
id answerNil(id, SEL) { return nil; }

/// Makes the SDK answer with this very dictionary, which may hold what no policies file can.
void give(NSDictionary *dictionary) {
  config = [dictionary retain];
  method_setImplementation(class_getInstanceMethod([Zorbel class], @selector(config)),
                           reinterpret_cast<IMP>(&answerConfig));
}

/// Makes the SDK ready, with this configuration, as in a policies file.
void deliver(NSString *json) {
  QVDeviceZorbelSetPolicies([NSString stringWithFormat:@"{\"ready\": true, \"config\": %@}", json]);
}

/// What both keys read as, and any key of the host's, when the value stands under it; "differ" when they disagree.
std::string read(NSString *json) {
  deliver(
      [NSString stringWithFormat:@"{\"%@\": %@, \"%@\": %@, \"host\": %@}", kLogCapture, json, kDictation, json, json]);
  const BOOL logCapture = [helper() isLogCapturingEnabled];
  if (logCapture != [helper() isKeyboardDictationAllowed]) return "differ";
  if (logCapture != [helper() boolValueForKey:@"host"]) return "differ";
  return logCapture ? "YES" : "NO";
}

class Configuration : public testing::Test {
protected:
  void SetUp() override { pool = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override { [pool drain]; }
  NSAutoreleasePool *pool;
};

TEST_F(Configuration, beforeTheSdkIsReadyReadsAsNoAndIsNotShownWhateverItHolds) {
  deliver([NSString stringWithFormat:@"{\"%@\": true, \"%@\": true, \"host\": true}", kLogCapture, kDictation]);
  EXPECT_TRUE([helper() isLogCapturingEnabled]);
  QVDeviceZorbelSetPolicies(@"{\"ready\": false}");
  EXPECT_FALSE([helper() isLogCapturingEnabled]);
  EXPECT_FALSE([helper() isKeyboardDictationAllowed]);
  EXPECT_FALSE([helper() boolValueForKey:@"host"]);
  EXPECT_EQ([helper() filteredZorbelConfig], nil);
}

TEST_F(Configuration, beforeTheSdkIsReadyIsNotEvenLookedAt) {
  give([NSDictionary dictionary]);
  [helper() isLogCapturingEnabled];
  [helper() isKeyboardDictationAllowed];
  [helper() filteredZorbelConfig];
  EXPECT_EQ(configAsked, 0);
}

TEST_F(Configuration, withoutAnSdkObjectReadsAsNoAndIsNil) {
  deliver([NSString stringWithFormat:@"{\"%@\": true, \"%@\": true}", kLogCapture, kDictation]);
  method_setImplementation(class_getClassMethod([Zorbel class], @selector(sharedInstance)),
                           reinterpret_cast<IMP>(&answerNil));
  EXPECT_FALSE([helper() isLogCapturingEnabled]);
  EXPECT_FALSE([helper() isKeyboardDictationAllowed]);
  EXPECT_EQ([helper() filteredZorbelConfig], nil);
}

TEST_F(Configuration, thatIsNilReadsAsNoAndFiltersToNil) {
  QVDeviceZorbelSetPolicies(@"{\"ready\": true}");
  EXPECT_EQ([[Zorbel sharedInstance] config], nil);
  EXPECT_FALSE([helper() isLogCapturingEnabled]);
  EXPECT_FALSE([helper() isKeyboardDictationAllowed]);
  EXPECT_EQ([helper() filteredZorbelConfig], nil);
}

TEST_F(Configuration, withoutTheKeyReadsAsNo) {
  deliver(@"{}");
  EXPECT_FALSE([helper() isLogCapturingEnabled]);
  EXPECT_FALSE([helper() isKeyboardDictationAllowed]);
  EXPECT_FALSE([helper() boolValueForKey:@"host"]);
  EXPECT_FALSE([helper() boolValueForKey:nil]);
}

TEST_F(Configuration, keepsTheTwoSwitchesApart) {
  deliver([NSString stringWithFormat:@"{\"%@\": true}", kLogCapture]);
  EXPECT_TRUE([helper() isLogCapturingEnabled]);
  EXPECT_FALSE([helper() isKeyboardDictationAllowed]);
  deliver([NSString stringWithFormat:@"{\"%@\": true}", kDictation]);
  EXPECT_FALSE([helper() isLogCapturingEnabled]);
  EXPECT_TRUE([helper() isKeyboardDictationAllowed]);
}

TEST_F(Configuration, takesTheExactKeyOnly) {
  deliver(@"{\"qv_zb_wr_enable_log_capture\": true, \"QV_ZB_WR_ENABLE_LOG_CAPTURE \": true, \"QV_ZB_WR_\": true}");
  EXPECT_FALSE([helper() isLogCapturingEnabled]);
  EXPECT_FALSE([helper() isKeyboardDictationAllowed]);
}

TEST_F(Configuration, withANumberReadsAsYesUnlessItIsZero) {
  for (NSString *json in @[ @"1", @"true", @"2", @"-1", @"0.5", @"256", @"4294967296", @"18446744073709551615" ])
    EXPECT_EQ(read(json), "YES") << [json UTF8String];
  for (NSString *json in @[ @"0", @"false", @"0.0", @"-0.0" ])
    EXPECT_EQ(read(json), "NO") << [json UTF8String];
}

TEST_F(Configuration, withAStringReadsAsThePlatformReadsIt) {
  for (NSString *json in @[
         @"\"YES\"", @"\"true\"", @"\"1\"", @"\"y\"", @"\"T\"", @"\"9\"", @"\"  yes\"", @"\"\\tTrue\"", @"\"+1\"",
         @"\"-1\"", @"\"007\"", @"\"yellow\""
       ])
    EXPECT_EQ(read(json), "YES") << [json UTF8String];
  for (NSString *json in @[
         @"\"NO\"", @"\"false\"", @"\"0\"", @"\"\"", @"\"   \"", @"\"no yes\"", @"\"000\"", @"\"+\"", @"\"on\"",
         @"\"enabled\"", @"\"ja\"", @"\"\u0661\"", @"\"\u00fd\""
       ])
    EXPECT_EQ(read(json), "NO") << [json UTF8String];
}

TEST_F(Configuration, withAnArrayADictionaryOrNullReadsAsNoAndRaisesNothing) {
  for (NSString *json in @[ @"[]", @"[true]", @"[\"YES\"]", @"{}", @"{\"boolValue\": true}", @"null" ])
    EXPECT_EQ(read(json), "NO") << [json UTF8String];
}

TEST_F(Configuration, withAnyOtherObjectReadsAsNoAndRaisesNothing) {
  QVDeviceZorbelSetPolicies(@"{\"ready\": true}");
  for (id value in @[
         [NSData dataWithBytes:"1" length:1], [NSDate date], [NSURL URLWithString:@"yes"],
         [NSValue valueWithNonretainedObject:@"1"], [NSObject class], [[[QVTruthful alloc] init] autorelease]
       ]) {
    give([NSDictionary dictionaryWithObject:value forKey:kLogCapture]);
    EXPECT_FALSE([helper() isLogCapturingEnabled]) << [NSStringFromClass([value class]) UTF8String];
    [config release];
  }
}

TEST_F(Configuration, isReadAnewEachTime) {
  EXPECT_EQ(read(@"true"), "YES");
  EXPECT_EQ(read(@"false"), "NO");
  EXPECT_EQ(read(@"true"), "YES");
}

NSDictionary *both(id more = nil, NSString *key = nil) {
  NSMutableDictionary *const all = [NSMutableDictionary dictionaryWithDictionary:@{
    kLogCapture : @"YES",
    kDictation : @1
  }];
  if (key) [all setObject:more forKey:key];
  return all;
}

TEST_F(Configuration, filteredIsACopyWithoutTheTwoKeys) {
  NSDictionary *const given = both(@"value", @"host");
  NSDictionary *const before = [[given copy] autorelease];
  NSMutableDictionary *const filtered = [helper() filteredConfigFromConfig:given];
  EXPECT_TRUE([filtered isEqual:@{@"host" : @"value"}]);
  EXPECT_TRUE([given isEqual:before]);
}

TEST_F(Configuration, filteredIsMutableAndTheCallersOwn) {
  NSMutableDictionary *const given = [NSMutableDictionary dictionaryWithDictionary:@{@"host" : @"value"}];
  NSMutableDictionary *const filtered = [helper() filteredConfigFromConfig:given];
  EXPECT_NE(filtered, given);
  EXPECT_TRUE([filtered isKindOfClass:[NSMutableDictionary class]]);
  [filtered setObject:@"more" forKey:@"other"];
  EXPECT_EQ([given count], 1u);
  // Also where there is nothing to copy.
  NSMutableDictionary *const empty = [NSMutableDictionary dictionary];
  EXPECT_NE([helper() filteredConfigFromConfig:empty], empty);
  [[helper() filteredConfigFromConfig:@{}] setObject:@"more" forKey:@"other"];
}

TEST_F(Configuration, filteredOfTheTwoKeysAloneIsEmptyAndNotNil) {
  NSMutableDictionary *const filtered = [helper() filteredConfigFromConfig:both()];
  ASSERT_NE(filtered, nil);
  EXPECT_EQ([filtered count], 0u);
}

TEST_F(Configuration, filteredThatLacksTheKeysIsAnEqualCopy) {
  NSDictionary *const given = @{@"a" : @1, @"b" : @[ @2 ], @"c" : [NSNull null]};
  EXPECT_TRUE([[helper() filteredConfigFromConfig:given] isEqual:given]);
  EXPECT_TRUE([[helper() filteredConfigFromConfig:[NSDictionary dictionary]] isEqual:[NSDictionary dictionary]]);
}

TEST_F(Configuration, filteredKeepsOtherKeysWithTheSamePrefix) {
  for (NSString *key in
       @[ @"QV_ZB_WR_", @"QV_ZB_WR_OTHER", @"QV_ZB_WR_ENABLE_LOG_CAPTURE_2", @"qv_zb_wr_enable_log_capture" ]) {
    NSDictionary *const expected = [NSDictionary dictionaryWithObject:@"kept" forKey:key];
    EXPECT_TRUE([[helper() filteredConfigFromConfig:both(@"kept", key)] isEqual:expected]) << [key UTF8String];
  }
}

TEST_F(Configuration, filteredOfNilIsNil) { EXPECT_EQ([helper() filteredConfigFromConfig:nil], nil); }

TEST_F(Configuration, ofAReadySdkIsShownWithoutTheTwoKeysEachTimeAsItIsThen) {
  deliver([NSString stringWithFormat:@"{\"%@\": true, \"%@\": \"NO\", \"host\": \"a\"}", kLogCapture, kDictation]);
  EXPECT_TRUE([[helper() filteredZorbelConfig] isEqual:@{@"host" : @"a"}]);
  deliver(@"{\"host\": \"b\", \"QV_ZB_WR_OTHER\": 1}");
  EXPECT_TRUE([[helper() filteredZorbelConfig] isEqual:(@{@"host" : @"b", @"QV_ZB_WR_OTHER" : @1})]);
}

TEST_F(Configuration, isReadWithoutALineInTheLog) {
  support::clearLog();
  EXPECT_EQ(read(@"[]"), "NO");
  [helper() filteredZorbelConfig];
  EXPECT_EQ(support::log(), std::vector<std::string>());
}

TEST(ConfigHelper, isAClassBelowNSObjectWhoseClassMethodsHaveTheCompilersEncodings) {
  EXPECT_EQ(class_getSuperclass(helper()), [NSObject class]);
  const auto encoding = [](SEL selector) {
    return std::string(method_getTypeEncoding(class_getClassMethod(helper(), selector)));
  };
  EXPECT_EQ(encoding(@selector(boolValueForKey:)), "C24@0:8@16");
  EXPECT_EQ(encoding(@selector(isLogCapturingEnabled)), "C16@0:8");
  EXPECT_EQ(encoding(@selector(filteredZorbelConfig)), "@16@0:8");
  EXPECT_EQ(encoding(@selector(filteredConfigFromConfig:)), "@24@0:8@16");
}

} // namespace
