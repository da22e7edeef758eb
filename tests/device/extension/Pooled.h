// What the tests of extensions share.
#pragma once

#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

#include <gtest/gtest.h>

#include <string>

class Pooled : public ::testing::Test {
protected:
  void SetUp() override { pool = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override { [pool drain]; }

  NSAutoreleasePool *pool = nil;
};

inline std::string text(id object) { return object ? [[object description] UTF8String] : "nil"; }

inline id throughArchive(id object) {
  return [NSKeyedUnarchiver unarchiveObjectWithData:[NSKeyedArchiver archivedDataWithRootObject:object]];
}
