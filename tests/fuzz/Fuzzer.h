// What the fuzzers share.
#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Ends the process, which makes the input of the moment one that fails.
[[noreturn]] inline void fail(NSString *sentence) {
  std::fprintf(stderr, "fuzzer: %s\n", [sentence UTF8String]);
  std::abort();
}

/// Runs `body` in a pool of its own; nothing that the library offers here may raise.
template <class Body> void withoutRaising(Body body) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  @try {
    body();
  } @catch (id raised) {
    fail([NSString stringWithFormat:@"raised %@", raised]);
  }
  [pool drain];
}
