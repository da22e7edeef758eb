#pragma once

#include "../Foundation/NSString.hpp"

namespace qvsb {

enum class UIUserInterfaceIdiom : NSInteger { phone = 0, pad = 1 };

class UIDevice : public NSObject {
  QVSB_HANDLE(UIDevice, NSObject)
  QVSB_CLASS_METHOD(UIDevice, currentDevice, "currentDevice")
  QVSB_METHOD(NSString, systemVersion, "systemVersion")
  QVSB_METHOD(UIUserInterfaceIdiom, userInterfaceIdiom, "userInterfaceIdiom")
};

/// Whether the device is a pad; one that does not know its kind is none.
inline bool isPad(UIDevice device) {
  return device.respondsToSelector("userInterfaceIdiom"_sel) &&
         device.userInterfaceIdiom() == UIUserInterfaceIdiom::pad;
}

} // namespace qvsb
