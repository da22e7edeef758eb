#pragma once

#include "NSObject.hpp"

namespace qvsb {

using NSDataWritingOptions = NSUInteger;

class NSData : public NSObject {
  QVSB_HANDLE(NSData, NSObject)
};

} // namespace qvsb
