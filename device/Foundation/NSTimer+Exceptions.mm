// Debian's timers swallow what their targets raise. On the phone an exception in a timer ends the app like any other.

#define EXPOSE_NSTimer_IVARS 1
#import <Foundation/Foundation.h>

#include "ReplacesFoundation.h"

@implementation NSTimer (QVDeviceExceptions)

// The run loop works out a repeating timer's next date itself.
- (void)fire {
  if (_invalidated) return;
  if (_block)
    _block(self);
  else if (_selector)
    [_target performSelector:_selector withObject:self];
  else // an invocation; Foundation's own housekeeping, every thirty seconds, is one
    [(NSInvocation *)_target invoke];
  if (!_repeats) [self invalidate];
}

@end
