// Policies that change while the process runs.
#import <Foundation/Foundation.h>
#import <Zorbel/QVDevicePolicies.h>
#import <Zorbel/Zorbel.h>

#include <thread>

#include <gtest/gtest.h>

namespace {

class ChangedPolicies : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    sdk = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
  }
  void TearDown() override { [pool drain]; }

  static std::string reasonOf(NSString *json) {
    @try {
      QVDeviceZorbelSetPolicies(json);
    } @catch (NSException *exception) {
      EXPECT_TRUE([[exception name] isEqual:NSInvalidArgumentException]);
      return [[exception reason] UTF8String];
    }
    return "did not raise";
  }

  NSAutoreleasePool *pool;
  Zorbel *sdk;
};

TEST_F(ChangedPolicies, areAnsweredFromThenOn) {
  EXPECT_FALSE([sdk isReady]);
  QVDeviceZorbelSetPolicies(@"{\"ready\": true, \"printPolicy\": 1, \"config\": {\"key\": \"wert ä\"}}");
  EXPECT_TRUE([sdk isReady]);
  EXPECT_EQ([sdk printPolicy], 1);
  EXPECT_TRUE([[[sdk config] objectForKey:@"key"] isEqual:@"wert ä"]);
}

TEST_F(ChangedPolicies, leaveTheKeysThatTheyDoNotNameAndReplaceWholeTheOnesThatTheyDo) {
  QVDeviceZorbelSetPolicies(@"{\"authState\": 2, \"config\": {\"a\": 1, \"b\": 2}, \"openInWhitelist\": [\"x\"]}");
  QVDeviceZorbelSetPolicies(@"{\"config\": {\"b\": 3}}");
  EXPECT_EQ([sdk authState], 2);
  EXPECT_TRUE([[sdk openInWhitelist] isEqual:[NSArray arrayWithObject:@"x"]]);
  EXPECT_EQ([[sdk config] count], 1u);
  EXPECT_EQ([[[sdk config] objectForKey:@"b"] intValue], 3);
}

TEST_F(ChangedPolicies, ofAnEmptyObjectChangeNothing) {
  QVDeviceZorbelSetPolicies(@"{\"printPolicy\": 1}");
  QVDeviceZorbelSetPolicies(@"{}");
  EXPECT_EQ([sdk printPolicy], 1);
}

TEST_F(ChangedPolicies, thatAreMalformedRaiseWithPlaceAndReasonAndChangeNothing) {
  QVDeviceZorbelSetPolicies(@"{\"printPolicy\": 1}");
  EXPECT_EQ(reasonOf(@"{\"printPolicy\": 2, \"redy\": true}"),
            "QVDeviceZorbelSetPolicies: 1:20: unknown key \"redy\"; did you mean \"ready\"?");
  EXPECT_EQ(reasonOf(@"{\"printPolicy\": 2, \"ready\": 1}"),
            "QVDeviceZorbelSetPolicies: 1:20: ready must be true or false, not the number 1");
  EXPECT_EQ(reasonOf(@"[]"), "QVDeviceZorbelSetPolicies: 1:1: the policies must be an object, not an array");
  EXPECT_EQ(reasonOf(@"{\"printPolicy\": 2").find("QVDeviceZorbelSetPolicies: 1:18: not JSON: "), 0u);
  EXPECT_EQ(reasonOf(@"").find("QVDeviceZorbelSetPolicies: 1:1: not JSON: "), 0u);
  EXPECT_EQ(reasonOf(nil).find("QVDeviceZorbelSetPolicies: 1:1: not JSON: "), 0u);
  EXPECT_EQ([sdk printPolicy], 1);
  EXPECT_FALSE([sdk isReady]);
}

TEST_F(ChangedPolicies, areAlwaysWholeForOtherThreads) {
  QVDeviceZorbelSetPolicies(@"{\"config\": {\"a\": 0, \"b\": 0}}");
  std::thread changing([] {
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    for (int i = 1; i <= 200; ++i) {
      QVDeviceZorbelSetPolicies([NSString stringWithFormat:@"{\"config\": {\"a\": %d, \"b\": %d}}", i, i]);
    }
    [inner drain];
  });
  int seen = 0;
  while (seen < 200) {
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    NSDictionary *const config = [sdk config];
    const int a = [[config objectForKey:@"a"] intValue];
    const int b = [[config objectForKey:@"b"] intValue];
    [inner drain];
    ASSERT_EQ(a, b);
    ASSERT_GE(a, seen);
    seen = a;
  }
  changing.join();
}

} // namespace
