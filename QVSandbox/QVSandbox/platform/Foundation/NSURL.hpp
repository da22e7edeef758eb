#pragma once

#include "NSString.hpp"

namespace qvsb {

class NSURL : public NSObject {
  QVSB_HANDLE(NSURL, NSObject)
  QVSB_METHOD(NSString, path, "path")
};

} // namespace qvsb
