#pragma once

#include "NSArray.hpp"
#include "NSDictionary.hpp"

namespace qvsb {

/// What goes to an extension and what comes back from it.
class NSExtensionItem : public NSObject {
  QVSB_HANDLE(NSExtensionItem, NSObject)
  QVSB_CLASS_METHOD(NSExtensionItem, alloc, "alloc")
  QVSB_METHOD(NSExtensionItem, init, "init")
  /// Item providers.
  QVSB_METHOD(void, setAttachments, "setAttachments:", NSArray)
  QVSB_METHOD(NSDictionary, userInfo, "userInfo")
};

} // namespace qvsb
