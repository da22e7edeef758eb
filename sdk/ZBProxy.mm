#import <Zorbel/ZBProxy.h>

#include <objc/runtime.h>

@implementation ZBProxy

- (id)initWithTarget:(id)target {
  _target = [target retain];
  return self;
}

- (void)dealloc {
  [_target release];
  [super dealloc];
}

- (id)target {
  return _target;
}

- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector {
  return [_target methodSignatureForSelector:selector];
}

- (void)forwardInvocation:(NSInvocation *)invocation {
  [invocation invokeWithTarget:_target];
}

- (BOOL)respondsToSelector:(SEL)selector {
  return [_target respondsToSelector:selector];
}

- (BOOL)conformsToProtocol:(Protocol *)protocol {
  return [_target conformsToProtocol:protocol];
}

- (BOOL)isKindOfClass:(Class)cls {
  for (Class own = object_getClass(self); own; own = class_getSuperclass(own)) {
    if (own == cls) return YES;
  }
  return [_target isKindOfClass:cls];
}

@end
