#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSMethodSignature : public NSObject {
  QVSB_HANDLE(NSMethodSignature, NSObject)
  /// Offsets may be left out of the encoding.
  QVSB_CLASS_METHOD(NSMethodSignature, signatureWithObjCTypes, "signatureWithObjCTypes:", const char*)
};

} // namespace qvsb
