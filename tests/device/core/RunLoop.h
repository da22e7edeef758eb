#pragma once

#import <Foundation/Foundation.h>

/// Turns the main run loop until the condition holds; false when it did not within ten seconds.
inline bool runLoopUntil(bool (^condition)()) {
  NSDate *const end = [NSDate dateWithTimeIntervalSinceNow:10];
  while (!condition()) {
    if ([end timeIntervalSinceNow] < 0) return false;
    [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
  }
  return true;
}
