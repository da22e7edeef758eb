#pragma once

#include "../platform/UIKit/UIWindow.hpp"

namespace qvsb {

/// What level a window of the host app had before it was lowered. Main thread.
class AppWindowInfo : public NSObject {
  QVSB_HANDLE(AppWindowInfo, NSObject)
  QVSB_CLASS_METHOD(AppWindowInfo, alloc, "alloc")
  QVSB_METHOD(AppWindowInfo, init, "init")

  /// Not kept; nil once it has gone.
  QVSB_METHOD(UIWindow, appWindow, "appWindow")
  QVSB_METHOD(void, setAppWindow, "setAppWindow:", UIWindow)
  QVSB_METHOD(UIWindowLevel, appWindowLevel, "appWindowLevel")
  QVSB_METHOD(void, setAppWindowLevel, "setAppWindowLevel:", UIWindowLevel)
};

/// Makes the class known to the runtime; once, at load.
Class registerAppWindowInfo();

} // namespace qvsb
