#include "NSObject+QVSBJRSwizzle.hpp"

#include <string_view>

namespace qvsb {

namespace {

// Also in the texts of the class-method variant, which ends up in the same method.
constexpr const char* kFullName = "+[NSObject(QVSBJRSwizzle) qvsbjr_swizzleMethod:withMethod:error:]";

BOOL refuse(NSError* slot, NSString message) {
  if (slot) {
    *slot = NSError::errorWithDomain_code_userInfo(
        "NSCocoaErrorDomain"_ns, -1, NSDictionary::dictionaryWithObject_forKey(message, NSLocalizedDescriptionKey()));
  }
  return NO;
}

/// Byte for byte. A method can have been added without an encoding; nothing is known to equal that.
bool sameEncoding(Method left, Method right) {
  const char* const leftTypes = method_getTypeEncoding(left);
  const char* const rightTypes = method_getTypeEncoding(right);
  return leftTypes && rightTypes && std::string_view(leftTypes) == rightTypes;
}

/// Gives the class a copy of its own of a method that it may only have inherited, so that the exchange stays below the
/// superclass. Does nothing for one that it defines itself.
void ownMethod(objc_class* cls, SEL selector, Method method) {
  class_addMethod(cls, selector.raw, class_getMethodImplementation(cls, selector.raw), method_getTypeEncoding(method));
}

BOOL swizzle(Class self, SEL, SEL original, SEL alternative, NSError* error) {
  objc_class* const cls = self.rawClass();
  const Method originalMethod = class_getInstanceMethod(cls, original.raw);
  if (!originalMethod) {
    return refuse(error, NSString::stringWithFormat("%s: original method %@ not found for class %@"_ns, kFullName,
                                                    NSStringFromSelector(original), NSStringFromClass(self)));
  }
  const Method alternativeMethod = class_getInstanceMethod(cls, alternative.raw);
  if (!alternativeMethod) {
    return refuse(error, NSString::stringWithFormat("%s: alternate method %@ not found for class %@"_ns, kFullName,
                                                    NSStringFromSelector(alternative), NSStringFromClass(self)));
  }
  if (!sameEncoding(originalMethod, alternativeMethod)) {
    return refuse(error, NSString::stringWithFormat(
                             "%s: alternative type encoding for selector %@ does not match original %@ in class %@"_ns,
                             kFullName, NSStringFromSelector(alternative), NSStringFromSelector(original),
                             NSStringFromClass(self)));
  }
  ownMethod(cls, original, originalMethod);
  ownMethod(cls, alternative, alternativeMethod);
  method_exchangeImplementations(class_getInstanceMethod(cls, original.raw),
                                 class_getInstanceMethod(cls, alternative.raw));
  return YES;
}

BOOL swizzleClassMethod(Class self, SEL, SEL original, SEL alternative, NSError* error) {
  return qvsbjr_swizzleMethod(classOf(self), original, alternative, error);
}

constexpr MethodEntry classMethods[] = {
    method<&swizzle>("qvsbjr_swizzleMethod:withMethod:error:"),
    method<&swizzleClassMethod>("qvsbjr_swizzleClassMethod:withClassMethod:error:"),
};

} // namespace

constinit const Category NSObjectQVSBJRSwizzle{"NSObject", "QVSBJRSwizzle", {}, classMethods};

BOOL qvsbjr_swizzleMethod(Class cls, SEL original, SEL alternative, NSError* error) {
  return send<BOOL>(cls, "qvsbjr_swizzleMethod:withMethod:error:"_sel, original, alternative, error);
}

BOOL qvsbjr_swizzleClassMethod(Class cls, SEL original, SEL alternative, NSError* error) {
  return send<BOOL>(cls, "qvsbjr_swizzleClassMethod:withClassMethod:error:"_sel, original, alternative, error);
}

} // namespace qvsb
