// What the SDK puts between the application and its delegate.
#import <UIKit/UIKit.h>
#import <Zorbel/QVDevicePolicies.h>
#import <Zorbel/ZBAppDelegateProxy.h>
#import <Zorbel/Zorbel.h>

#import "Raised.h"

#include <objc/runtime.h>

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

@interface QVHostDelegate : UIResponder <UIApplicationDelegate> {
@public
  std::vector<std::string> heard;
}
@end

@implementation QVHostDelegate
- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options {
  heard.push_back([[url absoluteString] UTF8String]);
  return [[options objectForKey:@"answer"] boolValue];
}
- (void)applicationDidBecomeActive:(UIApplication *)application {
  heard.push_back("active");
}
- (void)applicationWillResignActive:(UIApplication *)application {
  [NSException raise:@"Host" format:@"raised"];
}
- (double)ratio:(float)a of:(CGRect)b {
  return a * b.size.width;
}
@end

namespace {

using testing::ElementsAre;

class AppDelegateProxy : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    host = [[[QVHostDelegate alloc] init] autorelease];
    made = [[[ZBAppDelegateProxy alloc] initWithTarget:host] autorelease];
    proxy = made;
  }
  void TearDown() override { [pool drain]; }

  NSAutoreleasePool *pool;
  QVHostDelegate *host;
  ZBAppDelegateProxy *made;
  id proxy;
};

TEST_F(AppDelegateProxy, isAProxyOfItsOwnClass) {
  EXPECT_EQ([made class], [ZBAppDelegateProxy class]);
  EXPECT_EQ(class_getSuperclass(class_getSuperclass([made class])), [NSProxy class]);
  EXPECT_TRUE([made isKindOfClass:[ZBAppDelegateProxy class]]);
  EXPECT_TRUE([made isProxy]);
}

TEST_F(AppDelegateProxy, isAlsoOfItsDelegatesClassAndOfNoOther) {
  EXPECT_TRUE([made isKindOfClass:[QVHostDelegate class]]);
  EXPECT_TRUE([made isKindOfClass:[UIResponder class]]);
  EXPECT_FALSE([made isKindOfClass:[NSString class]]);
}

TEST_F(AppDelegateProxy, respondsAndConformsAsItsDelegateDoes) {
  EXPECT_TRUE([proxy respondsToSelector:@selector(applicationDidBecomeActive:)]);
  EXPECT_FALSE([proxy respondsToSelector:@selector(applicationWillTerminate:)]);
  EXPECT_FALSE([proxy respondsToSelector:@selector(initWithTarget:)]);
  EXPECT_TRUE([proxy conformsToProtocol:NSProtocolFromString(@"UIApplicationDelegate")]);
  EXPECT_FALSE([proxy conformsToProtocol:NSProtocolFromString(@"NSCopying")]);
}

TEST_F(AppDelegateProxy, forwardsWithArgumentsAndGivesBackTheAnswer) {
  NSURL *const url = [NSURL URLWithString:@"notes://a"];
  EXPECT_TRUE([proxy application:nil openURL:url options:@{@"answer" : @1}]);
  EXPECT_FALSE([proxy application:nil openURL:url options:@{@"answer" : @0}]);
  EXPECT_THAT(host->heard, ElementsAre("notes://a", "notes://a"));
  EXPECT_EQ([proxy ratio:0.5F of:CGRectMake(1, 2, 8, 4)], 4.0);
}

TEST_F(AppDelegateProxy, letsAnExceptionOfItsDelegatePass) {
  std::string reason;
  @try {
    [proxy applicationWillResignActive:nil];
  } @catch (NSException *exception) {
    reason = [[exception reason] UTF8String];
  }
  EXPECT_EQ(reason, "raised");
}

TEST_F(AppDelegateProxy, raisesForWhatItsDelegateDoesNotKnow) {
  EXPECT_EQ(raisedBy([this] { [proxy applicationWillTerminate:nil]; }), "NSInvalidArgumentException");
}

TEST_F(AppDelegateProxy, keepsItsDelegateAlive) {
  EXPECT_EQ([host retainCount], 2u);
  EXPECT_EQ([made target], host);
}

class AppDelegateProxyOfTheSDK : public AppDelegateProxy {
protected:
  void SetUp() override {
    AppDelegateProxy::SetUp();
    application = [[UIApplication alloc] init];
    [application setDelegate:host];
    sdk = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
  }
  void TearDown() override {
    [application release];
    AppDelegateProxy::TearDown();
  }

  UIApplication *application;
  Zorbel *sdk;
};

TEST_F(AppDelegateProxyOfTheSDK, isNotPutInUnlessThePoliciesSaySo) {
  [sdk startWithLaunchOptions:nil];
  EXPECT_EQ([application delegate], host);
}

TEST_F(AppDelegateProxyOfTheSDK, isPutInByTheStartAndHearsWhatTheApplicationTellsItsDelegate) {
  QVDeviceZorbelSetPolicies(@"{\"delegateProxy\": true}");
  EXPECT_EQ([application delegate], host);
  [sdk startWithLaunchOptions:nil];
  ASSERT_EQ([static_cast<id>([application delegate]) class], [ZBAppDelegateProxy class]);
  EXPECT_EQ([static_cast<id>([application delegate]) target], host);
  [[application delegate] applicationDidBecomeActive:application];
  EXPECT_THAT(host->heard, ElementsAre("active"));
}

TEST_F(AppDelegateProxyOfTheSDK, isNotPutAroundAnotherOneNorAroundNothing) {
  QVDeviceZorbelSetPolicies(@"{\"delegateProxy\": true}");
  [sdk startWithLaunchOptions:nil];
  id const first = [application delegate];
  [sdk startWithLaunchOptions:nil];
  EXPECT_EQ([application delegate], first);
  [application setDelegate:nil];
  [sdk startWithLaunchOptions:nil];
  EXPECT_EQ([application delegate], nil);
}

TEST_F(AppDelegateProxyOfTheSDK, livesAsLongAsTheApplicationMayAskForIt) {
  QVDeviceZorbelSetPolicies(@"{\"delegateProxy\": true}");
  NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
  [sdk startWithLaunchOptions:nil];
  [inner drain];
  EXPECT_EQ([static_cast<id>([application delegate]) target], host);
}

} // namespace
