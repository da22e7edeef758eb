#include "HostDelegate.hpp"

#include <cstdint>

#include "../platform/UIKit/UIApplication.hpp"

namespace qvsb {

namespace {

/// Null for a method that the class itself does not have.
const char* typesOf(NSObject host, SEL selector) {
  objc_method* method = class_getInstanceMethod(classOf(host).rawClass(), selector.raw);
  return method ? method_getTypeEncoding(method) : nullptr;
}

template <class... Integer> bool takesOneOf(const char* types) {
  return (encodingsAgree(types, methodEncoding<void, Integer>()) || ...);
}

} // namespace

Strong<NSObject> hostDelegate() { return NSObject::from(UIApplication::sharedApplication().delegate()); }

bool detail::hostAnswers(NSObject host, SEL selector, const char* types) {
  if (!host.respondsToSelector(selector)) {
    return false;
  }
  const char* actual = typesOf(host, selector);
  return !actual || encodingsAgree(types, actual);
}

bool hostTakesInteger(NSObject host, SEL selector) {
  if (!host.respondsToSelector(selector)) {
    return false;
  }
  const char* actual = typesOf(host, selector);
  return !actual || takesOneOf<std::int64_t, std::uint64_t, int, unsigned int, short, unsigned short, signed char,
                               unsigned char, bool>(actual);
}

} // namespace qvsb
