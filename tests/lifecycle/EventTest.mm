// Every event goes past the SDK's inactivity timer, and then to the platform.
#include "Lifecycle.h"

#include <objc/runtime.h>

@interface NSObject (QVPolicyObject)
+ (id)instance;
- (void)setZorbel:(id)zorbel;
@end

// The window that takes the app's events.
@interface QVHearingWindow : UIWindow
@end
@implementation QVHearingWindow
- (void)sendEvent:(UIEvent *)event {
  hear("window " + shown(event));
}
@end

// A touch of that window.
@interface QVTouchOfTheWindow : UITouch
@end
@implementation QVTouchOfTheWindow
- (UIWindow *)window {
  return [[UIApplication sharedApplication] keyWindow];
}
@end
@interface QVTouchEvent : UIEvent
@end
@implementation QVTouchEvent
- (NSSet *)allTouches {
  return [NSSet setWithObject:[[[QVTouchOfTheWindow alloc] init] autorelease]];
}
@end

// Plays an SDK.
@interface QVHearingSDK : NSObject {
@public
  BOOL ready;
}
@end
@implementation QVHearingSDK
- (BOOL)isReady {
  return ready;
}
- (void)sendEvent:(UIEvent *)event {
  hear("SDK " + shown(event));
}
@end

namespace {

IMP resetInactivity;
void hearAndReset(id self, SEL selector, id event) {
  hear("policy " + shown(event));
  reinterpret_cast<void (*)(id, SEL, id)>(resetInactivity)(self, selector, event);
}

/// Takes the place of the platform's implementation.
void hearPlatform(id, SEL, id event) { hear("platform " + shown(event)); }

class Event : public Lifecycle {
protected:
  void SetUp() override {
    Lifecycle::SetUp();
    window = make<QVHearingWindow>();
    [window makeKeyAndVisible];
    sdk = make<QVHearingSDK>();
    Class const policy = NSClassFromString(@"ZorbelUtil");
    [[policy instance] setZorbel:sdk];
    resetInactivity = method_setImplementation(class_getInstanceMethod(policy, sel_registerName("resetInactivity:")),
                                               reinterpret_cast<IMP>(&hearAndReset));
    event = make<QVTouchEvent>();
    clearHeard();
    support::clearLog();
  }
  QVHearingWindow *window = nil;
  QVHearingSDK *sdk = nil;
  UIEvent *event = nil;
};

} // namespace

TEST_F(Event, PassesThePolicyObjectAndTheSDKBeforeThePlatformDeliversIt) {
  sdk->ready = YES;
  [application sendEvent:event];
  EXPECT_EQ(heard(), (Lines{"policy " + shown(event), "SDK " + shown(event), "window " + shown(event)}));
  EXPECT_EQ(support::log(), Lines{});
}

TEST_F(Event, PassesThePolicyObjectAlsoBeforeTheSDKIsReady) {
  sdk->ready = NO;
  [application sendEvent:event];
  EXPECT_EQ(heard(), (Lines{"policy " + shown(event), "window " + shown(event)}));
}

TEST_F(Event, ThatIsNilIsHandedOnAsItCame) {
  sdk->ready = YES;
  // The platform's implementation is kept under the replacement's name.
  method_setImplementation(class_getInstanceMethod([UIApplication class], sel_registerName("sb_sendEvent:")),
                           reinterpret_cast<IMP>(&hearPlatform));
  [application sendEvent:nil];
  EXPECT_EQ(heard(), (Lines{"policy (null)", "SDK (null)", "platform (null)"}));
}
