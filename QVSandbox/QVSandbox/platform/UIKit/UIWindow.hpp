#pragma once

#include "../Foundation/NSObject.hpp"

namespace qvsb {

class UIWindow : public NSObject {
  QVSB_HANDLE(UIWindow, NSObject)
};

} // namespace qvsb
