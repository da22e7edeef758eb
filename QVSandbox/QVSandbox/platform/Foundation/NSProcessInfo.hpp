#pragma once

#include "NSString.hpp"

namespace qvsb {

class NSProcessInfo : public NSObject {
  QVSB_HANDLE(NSProcessInfo, NSObject)
  QVSB_CLASS_METHOD(NSProcessInfo, processInfo, "processInfo")
  QVSB_METHOD(NSString, processName, "processName")
};

} // namespace qvsb
