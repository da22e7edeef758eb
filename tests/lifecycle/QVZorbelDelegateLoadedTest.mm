// The delegate in a process into which the library was loaded, between the stand-in's own SDK and an application.
#import <UIKit/UIKit.h>
#import <Zorbel/QVDevicePolicies.h>
#import <Zorbel/QVDeviceRecord.h>
#import <Zorbel/Zorbel.h>

#include "support/Support.h"

#include <vector>

#include <gtest/gtest.h>

@interface NSObject (QVZorbelDelegate)
- (void)applicationDidFinishLaunchingWithOptions:(NSDictionary *)options;
- (int64_t)wrappedZorbelState;
@end

@interface QVHeedfulHost : NSObject <UIApplicationDelegate> {
@public
  NSMutableArray *heard;
}
@end

@implementation QVHeedfulHost
- (id)zorbelConfigIs:(NSDictionary *)config {
  [heard addObject:[NSString stringWithFormat:@"config %@", [[config allKeys] componentsJoinedByString:@","]]];
  return nil;
}
- (void)zorbelStateChangedTo:(int64_t)state {
  [heard addObject:[NSString stringWithFormat:@"state %d", static_cast<int>(state)]];
}
@end

namespace {

using Lines = std::vector<std::string>;

/// The SDK's calls since the `from`th, "selector result message", without those that are about its log.
Lines acknowledgements(NSUInteger from) {
  Lines calls;
  NSArray *const record = QVDeviceZorbelRecord();
  for (NSUInteger i = from; i < [record count]; ++i) {
    NSDictionary *const call = [record objectAtIndex:i];
    std::string line = support::text([call objectForKey:@"call"]);
    if (line == "setLoggingToFileSuspended:") continue;
    for (NSString *key in @[ @"result", @"message" ]) {
      if (id value = [call objectForKey:key])
        line += " " + (value == [NSNull null] ? std::string("nil") : support::text([value description]));
    }
    calls.push_back(line);
  }
  return calls;
}

class Loaded : public testing::Test {
protected:
  void SetUp() override { pool_ = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override { [pool_ drain]; }

private:
  NSAutoreleasePool *pool_ = nil;
};

} // namespace

TEST_F(Loaded, ConformsToTheProtocolsOfTheSDKAndTheApplication) {
  Class const cls = NSClassFromString(@"QVZorbelDelegate");
  for (NSString *name in @[ @"ZorbelDelegate", @"UIApplicationDelegate" ]) {
    ASSERT_TRUE(NSProtocolFromString(name) != nil) << [name UTF8String];
    EXPECT_TRUE([cls conformsToProtocol:NSProtocolFromString(name)]) << [name UTF8String];
  }
}

TEST_F(Loaded, HearsTheSDKAndAnswersIt) {
  QVHeedfulHost *const host = [[QVHeedfulHost alloc] init];
  host->heard = [[NSMutableArray alloc] init];
  [[UIApplication alloc] init];
  [[UIApplication sharedApplication] setDelegate:host];
  id const delegate = [[NSClassFromString(@"QVZorbelDelegate") alloc] init];
  const NSUInteger before = [QVDeviceZorbelRecord() count];
  [delegate applicationDidFinishLaunchingWithOptions:nil];
  EXPECT_EQ([[Zorbel sharedInstance] zorbelDelegate], delegate);
  QVDeviceZorbelChangePolicies(@"{\"ready\": true, \"authState\": 1, \"managedPolicy\": 2, \"printPolicy\": 1,"
                               @" \"pasteboardPolicy\": 1, \"openInPolicy\": 2,"
                               @" \"config\": {\"server\": \"a\", \"QV_ZB_WR_ENABLE_LOG_CAPTURE\": false}}",
                               @"welcome");
  EXPECT_EQ(acknowledgements(before),
            (Lines{"setZorbelDelegate:", "startWithLaunchOptions:", "configApplied:message: 1 nil",
                   "authStateApplied:message: 1 welcome", "configApplied:message: 1 nil",
                   "openInPolicyApplied:message: 1 nil", "pasteboardPolicyApplied:message: 1 nil",
                   "printPolicyApplied:message: 1 nil"}));
  EXPECT_TRUE([host->heard isEqual:(@[ @"config server", @"state 1", @"config server" ])])
      << [[host->heard description] UTF8String];
  EXPECT_EQ([delegate wrappedZorbelState], 1);
}
