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
};

inline NSString UIPasteboardChangedNotification() { return NSString(qvsbPasteboardChangedNotification); }

} // namespace qvsb
