#include "AppDelegateProxy.hpp"

namespace qvsb {

namespace {
Class appDelegateProxyClass() { return Class(objc_lookUpClass("ZBAppDelegateProxy")); }
} // namespace

bool descends(Class cls, Class ancestor) {
  if (!ancestor) {
    return false;
  }
  for (objc_class* each = cls.rawClass(); each; each = class_getSuperclass(each)) {
    if (each == ancestor.rawClass()) {
      return true;
    }
  }
  return false;
}

bool isAppDelegateProxy(Object object) { return descends(classOf(object), appDelegateProxyClass()); }

bool isClassOfProxies(Class cls) {
  return descends(cls, appDelegateProxyClass()) || descends(cls, Class(objc_lookUpClass("NSProxy")));
}

} // namespace qvsb
