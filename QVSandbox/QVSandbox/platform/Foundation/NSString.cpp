#include "NSString.hpp"

extern "C" {
objc_object* qvsbStringFromSelector(objc_selector* selector) QVSB_SYMBOL(NSStringFromSelector);
objc_object* qvsbStringFromClass(objc_class* cls) QVSB_SYMBOL(NSStringFromClass);
}

namespace qvsb {

NSString detail::publishConstant(std::atomic<id>& slot, const char* text, std::size_t length) {
  const auto fresh =
      NSString::from(NSString::from(send<Object>(NSString::classObject(), "alloc"_sel))
                         .initWithBytes_length_encoding(static_cast<const void*>(text), length, NSUTF8StringEncoding));
  id expected = nullptr;
  if (!slot.compare_exchange_strong(expected, fresh.raw(), std::memory_order_acq_rel, std::memory_order_acquire)) {
    Ownership<NSString>::release(fresh);
    return NSString(expected);
  }
  return fresh;
}

NSString NSStringFromSelector(SEL selector) { return NSString(qvsbStringFromSelector(selector.raw)); }
NSString NSStringFromClass(Class cls) { return NSString(qvsbStringFromClass(cls.rawClass())); }

} // namespace qvsb
