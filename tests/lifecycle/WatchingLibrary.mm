// A library that an app may carry, of the kind that watches what the app does: it exchanges methods of UIApplication
// when it is loaded, and methods of the delegate's class when a delegate is set.
#import <UIKit/UIKit.h>

#include <cstdio>
#include <objc/runtime.h>

namespace {

void say(SEL selector) { std::printf("other %s\n", sel_getName(selector)); }

void exchange(Class cls, SEL original, SEL watching) {
  method_exchangeImplementations(class_getInstanceMethod(cls, original), class_getInstanceMethod(cls, watching));
}

} // namespace

// What is put into the delegate's class.
@interface QVWatchingDelegate : NSObject
@end
@implementation QVWatchingDelegate
- (BOOL)watch_application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  say(@selector(application:didFinishLaunchingWithOptions:));
  return [self watch_application:application didFinishLaunchingWithOptions:options];
}
- (void)watch_applicationDidBecomeActive:(UIApplication *)application {
  say(@selector(applicationDidBecomeActive:));
  [self watch_applicationDidBecomeActive:application];
}
@end

@interface UIApplication (QVWatching)
@end
@implementation UIApplication (QVWatching)

+ (void)load {
  exchange(self, @selector(setDelegate:), @selector(watch_setDelegate:));
  exchange(self, @selector(delegate), @selector(watch_delegate));
  exchange(self, @selector(sendEvent:), @selector(watch_sendEvent:));
  exchange(self, @selector(openURL:), @selector(watch_openURL:));
}

- (void)watch_setDelegate:(id<UIApplicationDelegate>)delegate {
  say(@selector(setDelegate:));
  const struct {
    SEL original, watching;
  } pairs[] = {
      {@selector(application:didFinishLaunchingWithOptions:), @selector(watch_application:
                                                                  didFinishLaunchingWithOptions:)},
      {@selector(applicationDidBecomeActive:), @selector(watch_applicationDidBecomeActive:)},
  };
  for (const auto &pair : pairs) {
    const Method method = class_getInstanceMethod([QVWatchingDelegate class], pair.watching);
    class_addMethod([delegate class], pair.watching, method_getImplementation(method), method_getTypeEncoding(method));
    exchange([delegate class], pair.original, pair.watching);
  }
  [self watch_setDelegate:delegate];
}

- (id)watch_delegate {
  say(@selector(delegate));
  return [self watch_delegate];
}

- (void)watch_sendEvent:(UIEvent *)event {
  say(@selector(sendEvent:));
  [self watch_sendEvent:event];
}

- (BOOL)watch_openURL:(NSURL *)url {
  say(@selector(openURL:));
  return [self watch_openURL:url];
}

@end
