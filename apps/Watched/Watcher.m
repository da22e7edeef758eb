// A library that watches the app which carries it, as those that count an app's uses do: it exchanges methods of the
// application, and methods of whatever delegate that is given.
#import <UIKit/UIKit.h>

#import "Exchange.h"
#import "Say.h"

@interface UIApplication (Watcher)
- (void)watcher_setDelegate:(id<UIApplicationDelegate>)delegate;
- (void)watcher_sendEvent:(UIEvent *)event;
- (BOOL)watcher_openURL:(NSURL *)url;
@end

/// Where the methods come from that a delegate's class is given; there are no instances.
@interface Watcher : NSObject
@end

/// Tells the delegate's own method, if there was one.
static void Forward(id delegate, SEL own, UIApplication *application) {
  if ([delegate respondsToSelector:own]) [delegate performSelector:own withObject:application];
}

@implementation Watcher

- (void)watcher_applicationDidBecomeActive:(UIApplication *)application {
  Say(@"watcher: didBecomeActive");
  Forward(self, @selector(watcher_applicationDidBecomeActive:), application);
}

- (void)watcher_applicationWillResignActive:(UIApplication *)application {
  Say(@"watcher: willResignActive");
  Forward(self, @selector(watcher_applicationWillResignActive:), application);
}

- (void)watcher_applicationDidEnterBackground:(UIApplication *)application {
  Say(@"watcher: didEnterBackground");
  Forward(self, @selector(watcher_applicationDidEnterBackground:), application);
}

/// Puts one of the methods above in front of the class's own, or in its place where there is none.
+ (void)watch:(Class)cls selector:(NSString *)name {
  SEL original = NSSelectorFromString(name);
  SEL replacement = NSSelectorFromString([@"watcher_" stringByAppendingString:name]);
  Method method = class_getInstanceMethod([Watcher class], replacement);
  if (!class_getInstanceMethod(cls, original)) {
    class_addMethod(cls, original, method_getImplementation(method), method_getTypeEncoding(method));
  } else if (class_addMethod(cls, replacement, method_getImplementation(method), method_getTypeEncoding(method))) {
    Exchange(cls, original, replacement);
  }
}

+ (void)load {
  @autoreleasepool {
    Say(@"watcher: loaded");
    Class application = [UIApplication class];
    Exchange(application, @selector(setDelegate:), @selector(watcher_setDelegate:));
    Exchange(application, @selector(sendEvent:), @selector(watcher_sendEvent:));
    Exchange(application, @selector(openURL:), @selector(watcher_openURL:));
  }
}

@end

@implementation UIApplication (Watcher)

- (void)watcher_setDelegate:(id<UIApplicationDelegate>)delegate {
  Say(@"watcher: setDelegate: %@", [(id)delegate class]);
  for (NSString *name in
       @[ @"applicationDidBecomeActive:", @"applicationWillResignActive:", @"applicationDidEnterBackground:" ])
    [Watcher watch:[(id)delegate class] selector:name];
  [self watcher_setDelegate:delegate];
}

- (void)watcher_sendEvent:(UIEvent *)event {
  Say(@"watcher: sendEvent:");
  [self watcher_sendEvent:event];
}

- (BOOL)watcher_openURL:(NSURL *)url {
  Say(@"watcher: openURL: %@", url);
  return [self watcher_openURL:url];
}

@end
