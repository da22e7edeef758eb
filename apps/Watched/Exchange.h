#import <objc/runtime.h>

/// Exchanges two instance methods. The class gets a method of its own for what it only inherits.
static inline void Exchange(Class cls, SEL original, SEL replacement) {
  Method inherited = class_getInstanceMethod(cls, original);
  class_addMethod(cls, original, method_getImplementation(inherited), method_getTypeEncoding(inherited));
  method_exchangeImplementations(class_getInstanceMethod(cls, original), class_getInstanceMethod(cls, replacement));
}
