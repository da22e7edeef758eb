#pragma once

#include "NSObject.hpp"

namespace qvsb {

using NSFileWrapperWritingOptions = NSUInteger;

class NSFileWrapper : public NSObject {
  QVSB_HANDLE(NSFileWrapper, NSObject)
};

} // namespace qvsb
