#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSNumber : public NSObject {
  QVSB_HANDLE(NSNumber, NSObject)
  QVSB_METHOD(BOOL, boolValue, "boolValue")
  QVSB_METHOD(NSUInteger, unsignedIntegerValue, "unsignedIntegerValue")
};

} // namespace qvsb
