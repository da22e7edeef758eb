#import <Foundation/Foundation.h>
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
