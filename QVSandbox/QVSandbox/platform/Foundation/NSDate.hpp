#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSDate : public NSObject {
  QVSB_HANDLE(NSDate, NSObject)
  /// Now.
  QVSB_CLASS_METHOD(NSDate, date, "date")
};

} // namespace qvsb
