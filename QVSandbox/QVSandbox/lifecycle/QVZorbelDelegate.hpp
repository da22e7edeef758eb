#pragma once

#include <cstdint>

#include "../platform/Foundation/NSDictionary.hpp"
#include "../platform/Foundation/NSURL.hpp"
#include "../platform/UIKit/UIApplication.hpp"
#include "../platform/UIKit/UIViewController.hpp"
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

  /// The last of those that are presented, one over the other, from this controller on.
  QVSB_CLASS_METHOD(UIViewController, getCurrentViewController, "getCurrentViewController:", UIViewController)

  /// Tells the host delegate, if there is news, whether the SDK is ready and the app authorised and managed.
  QVSB_METHOD(void, updateWrappedZorbelState, "updateWrappedZorbelState")
  QVSB_METHOD(void, notifyAppDelegateWithZorbelState, "notifyAppDelegateWithZorbelState:", std::int64_t)

  /// Begins or ends the capture of standard error, as the configuration has it.
  QVSB_METHOD(void, triggerLogsInterception, "triggerLogsInterception")

  QVSB_METHOD(void, addObservers, "addObservers")
  QVSB_METHOD(void, removeObservers, "removeObservers")

  QVSB_METHOD(void, _clearInternalState, "_clearInternalState")
  /// Gives the host delegate what was held back; what its last part answered, YES without any.
  QVSB_METHOD(BOOL, _replayPendingActions, "_replayPendingActions")
  QVSB_METHOD(BOOL, _application_didFinishLaunchingWithOptions,
              "_application:didFinishLaunchingWithOptions:", UIApplication, NSDictionary)
  QVSB_METHOD(BOOL, _application_openURL_options, "_application:openURL:options:", UIApplication, NSURL, NSDictionary)
  QVSB_METHOD(void, _checkIfReadyAndTerminate, "_checkIfReadyAndTerminate")
  /// Returns at once; the process ends on a later turn of the main queue.
  QVSB_METHOD(void, _applicationTerminate, "_applicationTerminate")
};

Class registerQVZorbelDelegate();

} // namespace qvsb
