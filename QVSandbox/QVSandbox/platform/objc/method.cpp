#include "method.hpp"

#include <string_view>

namespace qvsb {

void addMethods(Class cls, std::span<const MethodEntry> methods) {
  for (const MethodEntry& entry : methods) {
    class_addMethod(cls.rawClass(), sel_registerName(entry.selector), entry.implementation(), entry.types);
  }
}

void addCategory(const Category& category) {
  const Class cls(objc_lookUpClass(category.className));
  if (!cls) {
    return;
  }
  addMethods(cls, category.instanceMethods);
  addMethods(classOf(cls), category.classMethods);
#if !QVSB_APPLE_RUNTIME
  // What every class answers to, a metaclass must answer to as well. With Apple's runtime a metaclass is an instance of
  // NSObject's; with GCC's it is one of Object's, whatever its class descends from.
  if (std::string_view(category.className) == "NSObject") {
    addMethods(classOf(Class(objc_lookUpClass("Object"))), category.classMethods);
  }
#endif
}

} // namespace qvsb
