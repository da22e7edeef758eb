#pragma once

#include "NSObject.hpp"
#include "NSRange.hpp"

namespace qvsb {

using NSDataWritingOptions = NSUInteger;

class NSData : public NSObject {
  QVSB_HANDLE(NSData, NSObject)
  QVSB_METHOD(NSUInteger, length, "length")
  QVSB_METHOD(void, getBytes_range, "getBytes:range:", void*, NSRange)
};

} // namespace qvsb
