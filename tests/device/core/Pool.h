#pragma once

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

/// A test whose autoreleased objects, its members' too, go when it ends.
class PoolTest : public testing::Test {
protected:
  PoolTest() : pool_([[NSAutoreleasePool alloc] init]) {}
  ~PoolTest() override { [pool_ release]; }

private:
  NSAutoreleasePool *pool_;
};
