// Stands in front of another object.

#ifndef ZORBEL_ZBPROXY_H
#define ZORBEL_ZBPROXY_H

#import <Foundation/Foundation.h>

/// Forwards every message to its target, which it retains, and answers as the target does what it responds to and
/// conforms to. It is of its own class and also of its target's; identity, hash and description are its own.
@interface ZBProxy : NSProxy {
@private
  id _target;
}

/// `target` must not be nil.
- (id)initWithTarget:(id)target;
- (id)target;

@end

#endif
