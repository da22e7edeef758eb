#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSArray : public NSObject {
  QVSB_HANDLE(NSArray, NSObject)
  QVSB_METHOD(Object, firstObject, "firstObject")
};

} // namespace qvsb
