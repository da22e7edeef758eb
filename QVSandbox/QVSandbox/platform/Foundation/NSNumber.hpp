#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSNumber : public NSObject {
  QVSB_HANDLE(NSNumber, NSObject)
  QVSB_CLASS_METHOD(NSNumber, numberWithBool, "numberWithBool:", BOOL)
  QVSB_METHOD(BOOL, boolValue, "boolValue")
  QVSB_METHOD(NSUInteger, unsignedIntegerValue, "unsignedIntegerValue")
};

} // namespace qvsb
