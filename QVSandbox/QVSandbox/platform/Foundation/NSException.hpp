#pragma once

#include "NSString.hpp"

namespace qvsb {

class NSException : public NSObject {
  QVSB_HANDLE(NSException, NSObject)
  QVSB_METHOD(NSString, name, "name")
  QVSB_METHOD(NSString, reason, "reason")

  /// `raise:format:`; does not return.
  template <class... Tail> [[noreturn]] static void raise_format(NSString name, NSString format, Tail... tail) {
    VariadicMessage<void(NSString, NSString)>::send(classObject(), "raise:format:"_sel, name, format, tail...);
    __builtin_unreachable();
  }
};

} // namespace qvsb
