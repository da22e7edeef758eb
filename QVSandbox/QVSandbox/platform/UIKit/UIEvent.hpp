#pragma once

#include "../Foundation/NSObject.hpp"

namespace qvsb {

class UIEvent : public NSObject {
  QVSB_HANDLE(UIEvent, NSObject)
};

} // namespace qvsb
