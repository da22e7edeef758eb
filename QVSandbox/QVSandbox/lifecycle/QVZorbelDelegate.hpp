#pragma once

#include "../platform/Foundation/NSDictionary.hpp"
#include "../platform/UIKit/UIWindow.hpp"

namespace qvsb {

/// The object that the SDK talks to; one a process, made when the host app has finished launching. Main thread.
class QVZorbelDelegate : public NSObject {
  QVSB_HANDLE(QVZorbelDelegate, NSObject)
  QVSB_CLASS_METHOD(QVZorbelDelegate, alloc, "alloc")
  QVSB_METHOD(QVZorbelDelegate, init, "init")

  /// The host app's delegate, to which launch and URLs are forwarded.
  QVSB_METHOD(Object, originalDelegate, "originalDelegate")
  QVSB_METHOD(void, setOriginalDelegate, "setOriginalDelegate:", Object)
  /// The window of a host whose delegate has no property for it.
  QVSB_METHOD(UIWindow, window, "window")
  QVSB_METHOD(void, setWindow, "setWindow:", UIWindow)

  /// Starts the SDK.
  QVSB_METHOD(void, applicationDidFinishLaunchingWithOptions, "applicationDidFinishLaunchingWithOptions:", NSDictionary)
  QVSB_METHOD(void, applicationDidBecomeActive, "applicationDidBecomeActive")
  QVSB_METHOD(void, applicationWillResignActive, "applicationWillResignActive")
  QVSB_METHOD(void, applicationWillTerminate, "applicationWillTerminate")
  QVSB_METHOD(void, applicationDidEnterBackground, "applicationDidEnterBackground")
  QVSB_METHOD(void, applicationWillEnterForeground, "applicationWillEnterForeground")
};

} // namespace qvsb
