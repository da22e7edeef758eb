#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSKeyedArchiver : public NSObject {
  QVSB_HANDLE(NSKeyedArchiver, NSObject)
};

} // namespace qvsb
