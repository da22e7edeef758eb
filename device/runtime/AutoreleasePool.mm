// What compilers call around code that autoreleases, and the plain ownership functions.

#import <Foundation/Foundation.h>
#include <objc/objc-arc.h>

id objc_retain(id object) { return [object retain]; }
void objc_release(id object) { [object release]; }
id objc_autorelease(id object) { return [object autorelease]; }

void *objc_autoreleasePoolPush(void) {
  // Debian's runtime looks a class up by its name at each message to it, which is half of what a pool costs.
  static Class const pool = [NSAutoreleasePool class];
  return [[pool alloc] init];
}

void objc_autoreleasePoolPop(void *pool) {
  // The pools that were pushed after this one, and not popped, go with it.
  [static_cast<NSAutoreleasePool *>(pool) release];
}
