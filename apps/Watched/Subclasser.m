// A library that watches the app which carries it by putting a class of its own, made while the app runs, between the
// delegate and its class, as key-value observing does. The delegate goes on saying that it is of its old class.
#import <UIKit/UIKit.h>

#import "Exchange.h"
#import "Say.h"

/// Where the made class's methods come from; there are no instances.
@interface Subclasser : NSObject
@end

@interface UIApplication (Subclasser)
- (void)subclasser_setDelegate:(id<UIApplicationDelegate>)delegate;
@end

/// Tells the class below the made one, if it has such a method.
static void Forward(id delegate, SEL selector, UIApplication *application) {
  Class below = class_getSuperclass(object_getClass(delegate));
  if (!class_respondsToSelector(below, selector)) return;
  void (*method)(id, SEL, UIApplication *) =
      (void (*)(id, SEL, UIApplication *))class_getMethodImplementation(below, selector);
  method(delegate, selector, application);
}

@implementation Subclasser

- (Class)class {
  return class_getSuperclass(object_getClass(self));
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"subclasser: didBecomeActive");
  Forward(self, @selector(applicationDidBecomeActive:), application);
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"subclasser: willResignActive");
  Forward(self, @selector(applicationWillResignActive:), application);
}

- (void)applicationDidEnterBackground:(UIApplication *)application {
  Say(@"subclasser: didEnterBackground");
  Forward(self, @selector(applicationDidEnterBackground:), application);
}

+ (void)putClassUnder:(id)delegate {
  Class below = object_getClass(delegate);
  NSString *name = [NSString stringWithFormat:@"Subclasser_%s", class_getName(below)];
  Class made = objc_allocateClassPair(below, [name UTF8String], 0);
  if (!made) return;
  for (NSString *selector in @[
         @"class", @"applicationDidBecomeActive:", @"applicationWillResignActive:", @"applicationDidEnterBackground:"
       ]) {
    Method method = class_getInstanceMethod([Subclasser class], NSSelectorFromString(selector));
    class_addMethod(made, NSSelectorFromString(selector), method_getImplementation(method),
                    method_getTypeEncoding(method));
  }
  objc_registerClassPair(made);
  object_setClass(delegate, made);
}

+ (void)load {
  @autoreleasepool {
    Say(@"subclasser: loaded");
    Exchange([UIApplication class], @selector(setDelegate:), @selector(subclasser_setDelegate:));
  }
}

@end

@implementation UIApplication (Subclasser)

- (void)subclasser_setDelegate:(id<UIApplicationDelegate>)delegate {
  Say(@"subclasser: setDelegate: %@", [(id)delegate class]);
  [Subclasser putClassUnder:delegate];
  [self subclasser_setDelegate:delegate];
}

@end
