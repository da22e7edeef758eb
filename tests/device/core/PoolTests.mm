// Autorelease pools as compilers push and pop them.

#include <gtest/gtest.h>
#include <objc/objc-arc.h>

#import <Foundation/Foundation.h>

#include <thread>

namespace {

int gone = 0;

} // namespace

@interface PoolSample : NSObject
@end

@implementation PoolSample

- (void)dealloc {
  ++gone;
  [super dealloc];
}

@end

namespace {

class Pool : public testing::Test {
protected:
  void SetUp() override { gone = 0; }
};

TEST_F(Pool, PoppedReleasesWhatWasAutoreleasedSinceItsPush) {
  void *const pool = objc_autoreleasePoolPush();
  objc_autorelease([[PoolSample alloc] init]);
  EXPECT_EQ(gone, 0);
  objc_autoreleasePoolPop(pool);
  EXPECT_EQ(gone, 1);
}

TEST_F(Pool, PoppedLeavesTheOuterPoolsObjects) {
  void *const outer = objc_autoreleasePoolPush();
  objc_autorelease([[PoolSample alloc] init]);
  void *const inner = objc_autoreleasePoolPush();
  objc_autorelease([[PoolSample alloc] init]);
  objc_autoreleasePoolPop(inner);
  EXPECT_EQ(gone, 1);
  objc_autorelease([[PoolSample alloc] init]);
  EXPECT_EQ(gone, 1);
  objc_autoreleasePoolPop(outer);
  EXPECT_EQ(gone, 3);
}

TEST_F(Pool, PoppedTakesThePoolsInsideItAlong) {
  void *const outer = objc_autoreleasePoolPush();
  for (int i = 0; i < 10; ++i) {
    objc_autoreleasePoolPush();
    objc_autorelease([[PoolSample alloc] init]);
  }
  objc_autoreleasePoolPop(outer);
  EXPECT_EQ(gone, 10);
  // The next pool stands in the outermost one's place.
  void *const next = objc_autoreleasePoolPush();
  objc_autorelease([[PoolSample alloc] init]);
  objc_autoreleasePoolPop(next);
  EXPECT_EQ(gone, 11);
}

TEST_F(Pool, HoldsMoreObjectsThanOnePage) {
  void *const pool = objc_autoreleasePoolPush();
  for (int i = 0; i < 100000; ++i)
    objc_autorelease([[PoolSample alloc] init]);
  objc_autoreleasePoolPop(pool);
  EXPECT_EQ(gone, 100000);
}

TEST_F(Pool, HoldsAnObjectThatWasAutoreleasedTwiceTwice) {
  void *const pool = objc_autoreleasePoolPush();
  PoolSample *const object = objc_retain([[PoolSample alloc] init]);
  objc_autorelease(objc_autorelease(object));
  EXPECT_EQ([object retainCount], 2U);
  objc_autoreleasePoolPop(pool);
  EXPECT_EQ(gone, 1);
}

TEST_F(Pool, OfAnotherThreadIsItsOwn) {
  void *const here = objc_autoreleasePoolPush();
  objc_autorelease([[PoolSample alloc] init]);
  std::thread([] {
    void *const there = objc_autoreleasePoolPush();
    objc_autorelease([[PoolSample alloc] init]);
    objc_autoreleasePoolPop(there);
  }).join();
  EXPECT_EQ(gone, 1);
  objc_autoreleasePoolPop(here);
  EXPECT_EQ(gone, 2);
}

TEST_F(Pool, OwnershipOfNilDoesNothing) {
  EXPECT_EQ(objc_retain(nil), nil);
  EXPECT_EQ(objc_autorelease(nil), nil);
  objc_release(nil);
  objc_autoreleasePoolPop(nullptr);
}

} // namespace
