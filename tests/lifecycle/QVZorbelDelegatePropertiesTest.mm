// The delegate's state: how it starts, and its accessors.
#include "DelegateTest.h"

#include <objc/runtime.h>

namespace {

using Properties = DelegateTest;

std::string typesOf(Class cls, const char *selector) {
  const Method method = class_getInstanceMethod(cls, sel_registerName(selector));
  return method ? method_getTypeEncoding(method) : "missing";
}

} // namespace

TEST_F(Properties, HaveAccessorsOfThePlatformsEncodings) {
  struct Property {
    const char *getter, *setter, *getterTypes, *setterTypes;
  };
  for (const Property &property : {
           Property{"launchDictionary", "setLaunchDictionary:", "@16@0:8", "v24@0:8@16"},
           Property{"launchUrl", "setLaunchUrl:", "@16@0:8", "v24@0:8@16"},
           Property{"launchSourceApplication", "setLaunchSourceApplication:", "@16@0:8", "v24@0:8@16"},
           Property{"launchAnnotation", "setLaunchAnnotation:", "@16@0:8", "v24@0:8@16"},
           Property{"replay", "setReplay:", "C16@0:8", "v20@0:8C16"},
           Property{"qvZorbel", "setQvZorbel:", "@16@0:8", "v24@0:8@16"},
           Property{"storyboardWindow", "setStoryboardWindow:", "@16@0:8", "v24@0:8@16"},
           Property{"appKeyWindow", "setAppKeyWindow:", "@16@0:8", "v24@0:8@16"},
           Property{"wrappedZorbelState", "setWrappedZorbelState:", "q16@0:8", "v24@0:8q16"},
           Property{"triggeredLog", "setTriggeredLog:", "C16@0:8", "v20@0:8C16"},
           Property{"originalDelegate", "setOriginalDelegate:", "@16@0:8", "v24@0:8@16"},
           Property{"window", "setWindow:", "@16@0:8", "v24@0:8@16"},
       }) {
    EXPECT_EQ(typesOf(delegateClass(), property.getter), property.getterTypes) << property.getter;
    EXPECT_EQ(typesOf(delegateClass(), property.setter), property.setterTypes) << property.setter;
  }
}

TEST_F(Properties, StandInADirectSubclassOfNSObject) {
  EXPECT_STREQ(class_getName(class_getSuperclass(delegateClass())), "NSObject");
}

TEST_F(Properties, StandInADelegateOfTheSDKAndOfTheApplicationAsFarAsThePlatformKnowsThem) {
  for (NSString *name in @[ @"ZorbelDelegate", @"UIApplicationDelegate" ]) {
    Protocol *const protocol = NSProtocolFromString(name);
    ASSERT_TRUE(protocol != nil) << [name UTF8String];
    EXPECT_TRUE([(id)delegate conformsToProtocol:protocol]) << [name UTF8String];
  }
}

TEST_F(Properties, StartEmptyWithAStateThatNobodyWasTold) {
  id<QVDelegateObject> const fresh = make();
  EXPECT_EQ([fresh launchDictionary], nil);
  EXPECT_EQ([fresh launchUrl], nil);
  EXPECT_EQ([fresh launchSourceApplication], nil);
  EXPECT_EQ([fresh launchAnnotation], nil);
  EXPECT_EQ([fresh replay], 0);
  EXPECT_EQ([fresh qvZorbel], nil);
  EXPECT_EQ([fresh storyboardWindow], nil);
  EXPECT_EQ([fresh appKeyWindow], nil);
  EXPECT_EQ([fresh wrappedZorbelState], -1);
  EXPECT_EQ([fresh triggeredLog], NO);
  EXPECT_EQ([fresh originalDelegate], nil);
  EXPECT_EQ([fresh window], nil);
  [fresh release];
}

TEST_F(Properties, KeepWhatTheyAreGivenAndReleaseItWhenTheyAreGivenAnother) {
  for (const char *setter :
       {"setLaunchDictionary:", "setLaunchUrl:", "setLaunchSourceApplication:", "setLaunchAnnotation:",
        "setStoryboardWindow:", "setAppKeyWindow:", "setOriginalDelegate:", "setWindow:"}) {
    NSObject *const first = [[NSObject alloc] init];
    const NSUInteger alone = [first retainCount];
    [(id)delegate performSelector:sel_registerName(setter) withObject:first];
    EXPECT_EQ([first retainCount], alone + 1) << setter;
    [(id)delegate performSelector:sel_registerName(setter) withObject:first];
    EXPECT_EQ([first retainCount], alone + 1) << setter;
    [(id)delegate performSelector:sel_registerName(setter) withObject:nil];
    EXPECT_EQ([first retainCount], alone) << setter;
    [first release];
  }
}

TEST_F(Properties, AreReleasedWithTheDelegate) {
  NSObject *const annotation = [[NSObject alloc] init];
  const NSUInteger alone = [annotation retainCount];
  id<QVDelegateObject> const fresh = make();
  [fresh setLaunchAnnotation:annotation];
  [fresh setOriginalDelegate:annotation];
  EXPECT_EQ([annotation retainCount], alone + 2);
  [fresh release];
  EXPECT_EQ([annotation retainCount], alone);
  [annotation release];
}

TEST_F(Properties, GiveBackWhatTheyWereSetTo) {
  NSDictionary *const options = @{@"key" : @"value"};
  NSURL *const url = [NSURL URLWithString:@"notes:1"];
  UIWindow *const window = [[[UIWindow alloc] init] autorelease];
  UIWindow *const other = [[[UIWindow alloc] init] autorelease];
  [delegate setLaunchDictionary:options];
  [delegate setLaunchUrl:url];
  [delegate setLaunchSourceApplication:@"com.example"];
  [delegate setLaunchAnnotation:@7];
  [delegate setStoryboardWindow:window];
  [delegate setAppKeyWindow:other];
  [delegate setOriginalDelegate:host];
  EXPECT_EQ([delegate launchDictionary], options);
  EXPECT_EQ([delegate launchUrl], url);
  EXPECT_EQ(support::text([delegate launchSourceApplication]), "com.example");
  EXPECT_EQ([[delegate launchAnnotation] intValue], 7);
  EXPECT_EQ([delegate storyboardWindow], window);
  EXPECT_EQ([delegate appKeyWindow], other);
  EXPECT_EQ([delegate originalDelegate], host);
}

TEST_F(Properties, HoldEveryNumberOfTheirType) {
  for (const int value : {0, 1, 2, 3, 255}) {
    [delegate setReplay:static_cast<unsigned char>(value)];
    EXPECT_EQ([delegate replay], value);
  }
  for (const int64_t value : {INT64_MIN, int64_t{-1}, int64_t{0}, int64_t{1} << 40, INT64_MAX}) {
    [delegate setWrappedZorbelState:value];
    EXPECT_EQ([delegate wrappedZorbelState], value);
  }
  [delegate setTriggeredLog:YES];
  EXPECT_EQ([delegate triggeredLog], YES);
  [delegate setReplay:0];
}

TEST_F(Properties, DoNotKeepTheSDKAlive) {
  NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
  EXPECT_EQ([delegate qvZorbel], sdk);
  [inner drain];
  releaseSDK();
  EXPECT_EQ([QVTestZorbel live], 0);
  EXPECT_EQ([delegate qvZorbel], nil);
}

TEST_F(Properties, AreClearedAsFarAsTheyBelongToALaunchThatWasHeldBack) {
  [delegate setLaunchDictionary:@{}];
  [delegate setLaunchUrl:[NSURL URLWithString:@"notes:1"]];
  [delegate setLaunchSourceApplication:@"com.example"];
  [delegate setLaunchAnnotation:@7];
  [delegate setReplay:3];
  [delegate setOriginalDelegate:host];
  [delegate setWrappedZorbelState:1];
  [delegate _clearInternalState];
  EXPECT_EQ([delegate launchDictionary], nil);
  EXPECT_EQ([delegate launchUrl], nil);
  EXPECT_EQ([delegate launchSourceApplication], nil);
  EXPECT_EQ([delegate launchAnnotation], nil);
  EXPECT_EQ([delegate replay], 0);
  EXPECT_EQ([delegate originalDelegate], host);
  EXPECT_EQ([delegate wrappedZorbelState], 1);
  EXPECT_EQ([delegate qvZorbel], sdk);
  EXPECT_EQ(take(), Lines());
}
