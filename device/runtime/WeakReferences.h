#pragma once

#import <Foundation/Foundation.h>

/// What the runtime asks an object before it gives out or makes a weak reference to it, under the weak table's lock.
@interface NSObject (QVDeviceWeakReferences)

/// Retains the object and answers YES, unless it is on its way out.
- (BOOL)retainWeakReference;

/// NO for an object that is on its way out.
- (BOOL)allowsWeakReference;

@end
