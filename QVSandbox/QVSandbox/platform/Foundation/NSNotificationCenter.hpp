#pragma once

#include "NSString.hpp"

namespace qvsb {

class NSNotificationCenter : public NSObject {
  QVSB_HANDLE(NSNotificationCenter, NSObject)
  QVSB_CLASS_METHOD(NSNotificationCenter, defaultCenter, "defaultCenter")
  /// The observer is not kept; a nil object stands for any.
  QVSB_METHOD(void, addObserver_selector_name_object, "addObserver:selector:name:object:", Object, SEL, NSString,
              Object)
  QVSB_METHOD(void, removeObserver, "removeObserver:", Object)
  QVSB_METHOD(void, removeObserver_name_object, "removeObserver:name:object:", Object, NSString, Object)
};

} // namespace qvsb
