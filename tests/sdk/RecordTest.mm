#import <UIKit/UIKit.h>
#import <Zorbel/QVDeviceRecord.h>
#import <Zorbel/Zorbel.h>

#include <gtest/gtest.h>

namespace {

NSDictionary *entry(NSUInteger index) { return [QVDeviceZorbelRecord() objectAtIndex:index]; }

TEST(Record, isEmptyBeforeTheFirstCall) { EXPECT_EQ([QVDeviceZorbelRecord() count], 0u); }

TEST(Record, keepsNilArgumentsOfThePrivateInitialiserAsNull) {
  [Zorbel initPrivateWithDelegate:nil version:@"4.2.0.18" swizzledMethods:nil];
  ASSERT_EQ([QVDeviceZorbelRecord() count], 1u);
  EXPECT_TRUE([[entry(0) objectForKey:@"call"] isEqual:@"initPrivateWithDelegate:version:swizzledMethods:"]);
  EXPECT_TRUE([[entry(0) objectForKey:@"delegate"] isEqual:[NSNull null]]);
  EXPECT_TRUE([[entry(0) objectForKey:@"version"] isEqual:@"4.2.0.18"]);
  EXPECT_TRUE([[entry(0) objectForKey:@"swizzledMethods"] isEqual:[NSNull null]]);
  EXPECT_EQ([entry(0) count], 4u);
}

TEST(Record, keepsTheVeryDelegateVersionAndMethodsThatWereGiven) {
  NSObject *const delegate = [[[NSObject alloc] init] autorelease];
  NSMutableString *const version = [NSMutableString stringWithString:@"1.0"];
  [Zorbel initPrivateWithDelegate:delegate version:version swizzledMethods:[NSArray arrayWithObject:@"a:"]];
  [version appendString:@" changed later"];
  EXPECT_EQ([[entry(0) objectForKey:@"delegate"] nonretainedObjectValue], delegate);
  EXPECT_TRUE([[entry(0) objectForKey:@"version"] isEqual:@"1.0"]);
  EXPECT_TRUE([[entry(0) objectForKey:@"swizzledMethods"] isEqual:[NSArray arrayWithObject:@"a:"]]);
}

TEST(Record, keepsNilVersionAsNull) {
  [Zorbel initPrivateWithDelegate:nil version:nil swizzledMethods:[NSArray array]];
  EXPECT_TRUE([[entry(0) objectForKey:@"version"] isEqual:[NSNull null]]);
  EXPECT_TRUE([[entry(0) objectForKey:@"swizzledMethods"] isEqual:[NSArray array]]);
}

TEST(Record, doesNotKeepADelegateAlive) {
  NSObject *const delegate = [[NSObject alloc] init];
  [Zorbel initPrivateWithDelegate:delegate version:@"1" swizzledMethods:nil];
  EXPECT_EQ([delegate retainCount], 1u);
  [delegate release];
}

Zorbel *made() { return [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil]; }

TEST(Record, keepsEachAcknowledgementWithResultAndMessageInTheOrderOfTheCalls) {
  Zorbel *const sdk = made();
  [sdk authStateApplied:1 message:@"a"];
  [sdk configApplied:2 message:@"b"];
  [sdk openInPolicyApplied:1 message:nil];
  [sdk pasteboardPolicyApplied:0 message:@"d"];
  [sdk printPolicyApplied:-1 message:@""];
  NSArray *const expected = @[
    @{@"call" : @"authStateApplied:message:",
      @"result" : @1,
      @"message" : @"a"},
    @{@"call" : @"configApplied:message:",
      @"result" : @2,
      @"message" : @"b"},
    @{@"call" : @"openInPolicyApplied:message:",
      @"result" : @1,
      @"message" : [NSNull null]},
    @{@"call" : @"pasteboardPolicyApplied:message:",
      @"result" : @0,
      @"message" : @"d"},
    @{@"call" : @"printPolicyApplied:message:",
      @"result" : @-1,
      @"message" : @""},
  ];
  NSArray *const record = QVDeviceZorbelRecord();
  EXPECT_TRUE([[record subarrayWithRange:NSMakeRange(1, [record count] - 1)] isEqual:expected])
      << [[record description] UTF8String];
}

TEST(Record, keepsWhatTheAppDoesThroughTheSDK) {
  Zorbel *const sdk = made();
  UIEvent *const event = [[[UIEvent alloc] init] autorelease];
  [sdk startWithLaunchOptions:nil];
  [sdk startWithLaunchOptions:@{@"key" : @"value"}];
  [sdk displayMessage:@"Not allowed"];
  [sdk displayMessage:nil];
  [sdk sendEvent:event];
  [sdk postPasscodeExtensionResult:@{@"a" : @1}];
  [Zorbel setLoggingToFileSuspended:YES];
  [sdk willExit];
  NSArray *const expected = @[
    @{@"call" : @"startWithLaunchOptions:", @"launchOptions" : [NSNull null]},
    @{@"call" : @"startWithLaunchOptions:",
      @"launchOptions" : @{@"key" : @"value"}},
    @{@"call" : @"displayMessage:", @"message" : @"Not allowed"},
    @{@"call" : @"displayMessage:", @"message" : [NSNull null]},
    @{@"call" : @"sendEvent:", @"event" : [NSValue valueWithNonretainedObject:event]},
    @{@"call" : @"postPasscodeExtensionResult:",
      @"result" : @{@"a" : @1}},
    @{@"call" : @"setLoggingToFileSuspended:",
      @"suspended" : @YES},
    @{@"call" : @"willExit"},
  ];
  NSArray *const record = QVDeviceZorbelRecord();
  EXPECT_TRUE([[record subarrayWithRange:NSMakeRange(1, [record count] - 1)] isEqual:expected])
      << [[record description] UTF8String];
}

TEST(Record, doesNotKeepAnEventAlive) {
  UIEvent *const event = [[UIEvent alloc] init];
  [made() sendEvent:event];
  EXPECT_EQ([event retainCount], 1u);
  [event release];
}

TEST(Record, keepsWhoseDelegateItWas) {
  NSObject *const delegate = [[[NSObject alloc] init] autorelease];
  [made() setZorbelDelegate:(id)delegate];
  EXPECT_TRUE([[entry(1) objectForKey:@"call"] isEqual:@"setZorbelDelegate:"]);
  EXPECT_EQ([[entry(1) objectForKey:@"delegate"] nonretainedObjectValue], delegate);
  [made() setZorbelDelegate:nil];
  EXPECT_EQ([entry(3) objectForKey:@"delegate"], [NSNull null]);
}

TEST(Record, holdsNoQuestionsAndNoLogLines) {
  Zorbel *const sdk = made();
  [Zorbel wrapperLogAtLevel:0 format:@"text"];
  [sdk isReady];
  [sdk config];
  [sdk zorbelDelegate];
  [Zorbel isAppScheme:@"a://b"];
  EXPECT_EQ([QVDeviceZorbelRecord() count], 1u);
}

TEST(SharedInstance, isNilUntilThePrivateInitialiserHasMadeIt) {
  EXPECT_EQ([Zorbel sharedInstance], nil);
  const id made = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
  EXPECT_NE(made, nil);
  EXPECT_EQ([Zorbel sharedInstance], made);
}

TEST(SharedInstance, staysTheSameWhenThePrivateInitialiserIsCalledAgainAndBothCallsAreRecorded) {
  const id first = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
  EXPECT_EQ([Zorbel initPrivateWithDelegate:nil version:@"2" swizzledMethods:nil], first);
  ASSERT_EQ([QVDeviceZorbelRecord() count], 2u);
  EXPECT_TRUE([[entry(1) objectForKey:@"version"] isEqual:@"2"]);
}

} // namespace
