#pragma once

#include "NSString.hpp"

namespace qvsb {

/// Hears of assertions that fail. Each thread has its own, which by default logs and raises; a host may put another in
/// its place, which need not raise.
class NSAssertionHandler : public NSObject {
  QVSB_HANDLE(NSAssertionHandler, NSObject)
  QVSB_CLASS_METHOD(NSAssertionHandler, currentHandler, "currentHandler")

  /// `handleFailureInMethod:object:file:lineNumber:description:`; the description is a format.
  template <class... Tail>
  void handleFailureInMethod_object_file_lineNumber_description(SEL method, Object object, NSString file,
                                                                NSInteger line, NSString format, Tail... tail) const {
    VariadicMessage<void(SEL, Object, NSString, NSInteger, NSString)>::send(
        *this, "handleFailureInMethod:object:file:lineNumber:description:"_sel, method, object, file, line, format,
        tail...);
  }
};

} // namespace qvsb
