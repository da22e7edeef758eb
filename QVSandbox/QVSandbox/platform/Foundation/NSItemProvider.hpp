#pragma once

#include "NSString.hpp"

namespace qvsb {

/// Something that one process offers another, under the identifier of its type.
class NSItemProvider : public NSObject {
  QVSB_HANDLE(NSItemProvider, NSObject)
  QVSB_CLASS_METHOD(NSItemProvider, alloc, "alloc")
  QVSB_METHOD(Object, initWithItem_typeIdentifier, "initWithItem:typeIdentifier:", Object, NSString)
};

} // namespace qvsb
