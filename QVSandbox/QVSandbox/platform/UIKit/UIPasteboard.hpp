#pragma once

#include "../Foundation/NSArray.hpp"
#include "../Foundation/NSString.hpp"

extern "C" {
extern objc_object* qvsbPasteboardChangedNotification QVSB_SYMBOL(UIPasteboardChangedNotification);
}

namespace qvsb {

class UIPasteboard : public NSObject {
  QVSB_HANDLE(UIPasteboard, NSObject)
  QVSB_CLASS_METHOD(UIPasteboard, generalPasteboard, "generalPasteboard")

  /// Dictionaries from type to value.
  QVSB_METHOD(NSArray, items, "items")
  QVSB_METHOD(void, setItems, "setItems:", NSArray)
};

inline NSString UIPasteboardChangedNotification() { return NSString(qvsbPasteboardChangedNotification); }

} // namespace qvsb
