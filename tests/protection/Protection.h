#pragma once

#import <CoreData/CoreData.h>
#import <UIKit/UIKit.h>

#include "support/Support.h"

#include <gtest/gtest.h>

// Written out, so that the tests do not agree with the platform's constants by using them.
inline constexpr const char kRaised[] = "NSFileProtectionCompleteUntilFirstUserAuthentication";
inline constexpr const char kNone[] = "NSFileProtectionNone";
inline constexpr const char kComplete[] = "NSFileProtectionComplete";
inline constexpr const char kUnlessOpen[] = "NSFileProtectionCompleteUnlessOpen";

/// Every test in a folder of its own, with an empty log.
class Protection : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    folder = support::freshFolder();
    support::clearLog();
  }
  void TearDown() override { [pool drain]; }

  NSString *path(NSString *name) { return [folder stringByAppendingPathComponent:name]; }
  NSURL *url(NSString *name) { return [NSURL fileURLWithPath:path(name)]; }
  std::string classOf(NSString *name) { return support::storedClass(path(name)); }
  NSData *bytes() { return [@"some bytes" dataUsingEncoding:NSUTF8StringEncoding]; }

  /// A name that cannot be written: its folder is missing.
  NSString *impossible() { return path(@"missing/file"); }
  NSURL *impossibleURL() { return [NSURL fileURLWithPath:impossible()]; }

  /// A name that cannot be written although an item stands there: a folder, of class none. What protects in spite of a
  /// failure gives itself away by its class.
  NSString *occupied() {
    NSString *const occupied = path(@"occupied");
    if (!support::exists(occupied)) {
      [[NSFileManager defaultManager] createDirectoryAtPath:[occupied stringByAppendingPathComponent:@"inside"]
                                withIntermediateDirectories:YES
                                                 attributes:nil
                                                      error:NULL];
      support::clearLog();
    }
    support::storeClass(occupied, kNone);
    return occupied;
  }
  NSURL *occupiedURL() { return [NSURL fileURLWithPath:occupied()]; }
  std::string classOfOccupied() { return classOf(@"occupied"); }

  NSAutoreleasePool *pool;
  NSString *folder;
};
