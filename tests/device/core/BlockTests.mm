// Blocks are objects, and keep what they captured.

#include <Block.h>
#include <gtest/gtest.h>
#include <objc/runtime.h>

#import <Foundation/Foundation.h>

#include <memory>
#include <thread>
#include <vector>

#include "Pool.h"

namespace {

int gone = 0;

} // namespace

@interface BlockSample : NSObject
@end

@implementation BlockSample

- (void)dealloc {
  ++gone;
  [super dealloc];
}

@end

@interface BlockHolder : NSObject {
  int (^block_)(void);
}
@property (nonatomic, copy) int (^block)(void);
@end

@implementation BlockHolder
@synthesize block = block_;

- (void)dealloc {
  [block_ release];
  [super dealloc];
}

@end

namespace {

using IntBlock = int (^)(void);

class Blocks : public PoolTest {
protected:
  void SetUp() override { gone = 0; }
};

id itself(id self, SEL) { return self; }

IntBlock counter(int start) {
  __block int count = start;
  return [[^{
    return ++count;
  } copy] autorelease];
}

TEST_F(Blocks, BelongToTheClassOfWhereTheyLie) {
  int number = 1;
  id const onStack = ^{
    return number;
  };
  id const copied = [[onStack copy] autorelease];
  id const global = ^{
    return 1;
  };
  EXPECT_STREQ(object_getClassName(onStack), "__NSStackBlock__");
  EXPECT_STREQ(object_getClassName(copied), "__NSMallocBlock__");
  EXPECT_STREQ(object_getClassName(global), "__NSGlobalBlock__");
  for (id block in @[ copied, global ]) {
    EXPECT_TRUE([block isKindOfClass:NSClassFromString(@"NSBlock")]);
    EXPECT_TRUE([block isKindOfClass:[NSObject class]]);
    EXPECT_FALSE([block isKindOfClass:[NSString class]]);
    EXPECT_TRUE([block conformsToProtocol:NSProtocolFromString(@"NSCopying")]);
  }
}

TEST_F(Blocks, CopiedOutliveTheirMakersFrame) {
  IntBlock const count = counter(40);
  EXPECT_EQ(count(), 41);
  EXPECT_EQ(count(), 42);
}

TEST_F(Blocks, CopiedTwiceAreTheSameBlock) {
  int number = 1;
  id const first = [^{
    return number;
  } copy];
  id const second = [first copy];
  EXPECT_EQ(first, second);
  EXPECT_EQ([first retainCount], 2U);
  [second release];
  EXPECT_EQ([first retainCount], 1U);
  [first release];
}

TEST_F(Blocks, CopiedRetainTheObjectsThatTheyCaptured) {
  BlockSample *const object = [[BlockSample alloc] init];
  id const block = [^{
    return [object hash];
  } copy];
  EXPECT_EQ([object retainCount], 2U);
  [object release];
  EXPECT_EQ(gone, 0);
  [block release];
  EXPECT_EQ(gone, 1);
}

TEST_F(Blocks, CopiedDoNotRetainAnObjectInABlockVariable) {
  __block BlockSample *object = [[BlockSample alloc] init];
  id const block = [^{
    object = nil;
  } copy];
  EXPECT_EQ([object retainCount], 1U);
  [object release];
  EXPECT_EQ(gone, 1);
  [block release];
}

TEST_F(Blocks, CopiedCopyTheBlocksThatTheyCaptured) {
  int number = 5;
  IntBlock const inner = ^{
    return number;
  };
  IntBlock const outer = [^{
    return inner() + 1;
  } copy];
  EXPECT_EQ(outer(), 6);
  [outer release];
}

TEST_F(Blocks, CopiedRunConstructorsAndDestructorsOfWhatTheyCaptured) {
  auto shared = std::make_shared<int>(9);
  IntBlock block = nil;
  {
    // The block in this frame has a copy of its own, until the end of the frame.
    IntBlock const onStack = ^{
      return *shared;
    };
    EXPECT_EQ(shared.use_count(), 2);
    block = [onStack copy];
    EXPECT_EQ(shared.use_count(), 3);
  }
  EXPECT_EQ(shared.use_count(), 2);
  EXPECT_EQ(block(), 9);
  [block release];
  EXPECT_EQ(shared.use_count(), 1);
}

TEST_F(Blocks, ShareABlockVariableWithTheirMaker) {
  __block int number = 1;
  void (^const first)(void) = [^{
    number += 10;
  } copy];
  void (^const second)(void) = [^{
    number += 100;
  } copy];
  first();
  second();
  number += 1000;
  EXPECT_EQ(number, 1111);
  [first release];
  EXPECT_EQ(number, 1111);
  second();
  EXPECT_EQ(number, 1211);
  [second release];
}

TEST_F(Blocks, RetainedOnTheStackStayThere) {
  int number = 1;
  id const block = ^{
    return number;
  };
  EXPECT_EQ([block retain], block);
  EXPECT_STREQ(object_getClassName(block), "__NSStackBlock__");
  [block release];
  EXPECT_EQ([block autorelease], block);
}

TEST_F(Blocks, GlobalIgnoreBeingRetainedAndReleased) {
  id const block = ^{
    return 1;
  };
  EXPECT_EQ([block copy], block);
  for (int i = 0; i < 10; ++i)
    [block release];
  EXPECT_EQ(static_cast<IntBlock>(block)(), 1);
}

TEST_F(Blocks, InAnArrayStayAsLongAsTheArray) {
  BlockSample *const object = [[BlockSample alloc] init];
  NSMutableArray *const array = [[NSMutableArray alloc] init];
  {
    id const block = [^{
      return [object hash];
    } copy];
    [array addObject:block];
    [block release];
  }
  [object release];
  EXPECT_TRUE([array containsObject:[array objectAtIndex:0]]);
  [array release];
  EXPECT_EQ(gone, 1);
}

TEST_F(Blocks, InACopyPropertyAreCopied) {
  int number = 3;
  BlockHolder *const holder = [[BlockHolder alloc] init];
  holder.block = ^{
    return number;
  };
  EXPECT_STREQ(object_getClassName(holder.block), "__NSMallocBlock__");
  EXPECT_EQ(holder.block(), 3);
  holder.block = nil;
  EXPECT_TRUE(holder.block == nil);
  [holder release];
}

TEST_F(Blocks, AutoreleasedGoWithThePool) {
  BlockSample *const object = [[BlockSample alloc] init];
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  [[^{
    return [object hash];
  } copy] autorelease];
  [object release];
  EXPECT_EQ(gone, 0);
  [pool release];
  EXPECT_EQ(gone, 1);
}

TEST_F(Blocks, DescribeThemselvesByClassAndAddress) {
  id const block = [[^{
    return gone;
  } copy] autorelease];
  EXPECT_TRUE(([[block description] isEqual:[NSString stringWithFormat:@"<__NSGlobalBlock__: %p>", block]]));
}

TEST_F(Blocks, AnswerAMethodThatIsAddedToEveryObjectLater) {
  const auto answer = reinterpret_cast<IMP>(reinterpret_cast<void *>(&itself));
  ASSERT_TRUE(class_addMethod([NSObject class], sel_registerName("addedLater"), answer, "@16@0:8"));
  int number = 1;
  id const onStack = ^{
    return number;
  };
  EXPECT_EQ([onStack performSelector:sel_registerName("addedLater")], onStack);
  id const copied = [[onStack copy] autorelease];
  EXPECT_EQ([copied performSelector:sel_registerName("addedLater")], copied);
}

TEST_F(Blocks, NilIsCopiedToNil) { EXPECT_EQ(_Block_copy(nullptr), nullptr); }

TEST_F(Blocks, CopiedAndReleasedByManyThreadsGoOnce) {
  BlockSample *const object = [[BlockSample alloc] init];
  id const block = [^{
    return [object hash];
  } copy];
  [object release];
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([block] {
      for (int round = 0; round < 50000; ++round) {
        [block copy];
        [block release];
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_EQ([block retainCount], 1U);
  EXPECT_EQ(gone, 0);
  [block release];
  EXPECT_EQ(gone, 1);
}

} // namespace
