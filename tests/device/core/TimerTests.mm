// Timers, whose firing the device has taken over.

#include <gtest/gtest.h>

#import "Pool.h"
#import "RunLoop.h"

namespace {

using Timer = PoolTest;

/// An invocation of -[NSMutableArray addObject:].
NSInvocation *adding(id object, NSMutableArray *array) {
  NSInvocation *const invocation =
      [NSInvocation invocationWithMethodSignature:[array methodSignatureForSelector:@selector(addObject:)]];
  [invocation setTarget:array];
  [invocation setSelector:@selector(addObject:)];
  [invocation setArgument:&object atIndex:2];
  return invocation;
}

} // namespace

TEST_F(Timer, MadeWithAnInvocationInvokesIt) {
  NSMutableArray *const array = [NSMutableArray array];
  // The run loop keeps it only until it has fired.
  NSTimer *const timer = [[[NSTimer scheduledTimerWithTimeInterval:0 invocation:adding(@"fired", array)
                                                           repeats:NO] retain] autorelease];
  EXPECT_TRUE(runLoopUntil(^bool {
    return [array count] > 0;
  }));
  EXPECT_FALSE([timer isValid]);
  EXPECT_EQ([array count], 1u);
}

TEST_F(Timer, WhoseTargetIsAnInvocationInvokesItEachTime) {
  // As Foundation makes the one that it keeps house with.
  NSMutableArray *const array = [NSMutableArray array];
  NSTimer *const timer = [[[NSTimer alloc] initWithFireDate:nil interval:0.001 target:adding(@"fired", array)
                                                   selector:NULL
                                                   userInfo:nil
                                                    repeats:YES] autorelease];
  [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
  EXPECT_TRUE(runLoopUntil(^bool {
    return [array count] > 2;
  }));
  EXPECT_TRUE([timer isValid]);
  [timer invalidate];
}

TEST_F(Timer, WithASelectorSendsItToItsTargetWithItself) {
  NSMutableArray *const array = [NSMutableArray array];
  NSTimer *const timer = [NSTimer scheduledTimerWithTimeInterval:0 target:array selector:@selector(addObject:)
                                                        userInfo:nil
                                                         repeats:NO];
  EXPECT_TRUE(runLoopUntil(^bool {
    return [array count] > 0;
  }));
  EXPECT_EQ([array lastObject], timer);
}
