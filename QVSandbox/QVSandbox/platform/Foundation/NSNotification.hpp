#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSNotification : public NSObject {
  QVSB_HANDLE(NSNotification, NSObject)
  /// Whom or what it is about.
  QVSB_METHOD(Object, object, "object")
};

} // namespace qvsb
