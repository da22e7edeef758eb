#include "swizzleMethod.hpp"

#include "../platform/Zorbel/Zorbel.hpp"
#include "NSObject+QVSBJRSwizzle.hpp"

using namespace qvsb;

void swizzleMethod(Class cls, SEL original, SEL replacement) {
  const Method method =
      class_getInstanceMethod(classNamed<"ZBWrappedApplicationDelegate">().rawClass(), replacement.raw);
  if (!method) {
    Zorbel::wrapperLogAtLevel_format(0, "Missing implementation for %@"_ns, NSStringFromSelector(replacement));
    return;
  }
  const IMP implementation = method_getImplementation(method);
  const char* const types = method_getTypeEncoding(method);
  if (!implementation || !types) {
    Zorbel::wrapperLogAtLevel_format(0, "Malformed implementation for %@"_ns, NSStringFromSelector(replacement));
    return;
  }
  Zorbel::wrapperLogAtLevel_format(5, "Swizzling %@ with %@ with type %s for Class %@"_ns,
                                   NSStringFromSelector(original), NSStringFromSelector(replacement), types,
                                   NSStringFromClass(cls));
  if (!class_getInstanceMethod(cls.rawClass(), original.raw)) {
    Zorbel::wrapperLogAtLevel_format(
        5, "Original method does not exist. Adding implementation with original selector."_ns);
    class_addMethod(cls.rawClass(), original.raw, implementation, types);
    return;
  }
  class_addMethod(cls.rawClass(), replacement.raw, implementation, types);
  NSError error;
  qvsbjr_swizzleMethod(cls, original, replacement, &error);
  Zorbel::wrapperLogAtLevel_format(5, "Original method exists. Swapped implementation with error: %@"_ns, error);
}
