#pragma once

#include "../platform/Foundation/NSData.hpp"
#include "../platform/Foundation/NSDictionary.hpp"
#include "../platform/UIKit/UIWindow.hpp"

namespace qvsb {

/// Puts the management app's passcode extension above the host app and takes it down again; one a process. Main thread,
/// except that start() and isPasscodeExtensionActive() may be called on any, and that an extension without a view
/// controller is reported on the thread that the platform tells of it on, which reaches postPasscodeExtensionResult()
/// and stop() there. Never send `initPrivate` to a second one: it resets the shared instance, which is then no longer
/// active and has lost its window.
class QVSBPasscodeExtensionManager : public NSObject {
  QVSB_HANDLE(QVSBPasscodeExtensionManager, NSObject)
  /// Made when it is first asked for.
  QVSB_CLASS_METHOD(QVSBPasscodeExtensionManager, sharedInstance, "sharedInstance")

  /// Has the extension shown on the next turn of the main queue. Refused, with a line in the log, while it is shown and
  /// while the app is not active.
  QVSB_METHOD(void, start, "start")
  /// Takes the extension down, and gives the host's windows their levels and the key state back, which it has only
  /// taken once it is shown. Nothing when it is not active.
  QVSB_METHOD(void, stop, "stop")
  /// Stops, and hands the extension's answer to the SDK; nil when it could not be started.
  QVSB_METHOD(void, postPasscodeExtensionResult, "postPasscodeExtensionResult:", NSDictionary)
  /// From the moment that a start is accepted until it is stopped.
  QVSB_METHOD(BOOL, isPasscodeExtensionActive, "isPasscodeExtensionActive")
  /// Whether this release of the platform can show the extension.
  QVSB_METHOD(BOOL, canAppDisplayPasscodeExtension, "canAppDisplayPasscodeExtension")

  // What the SDK tells of the app, as of the last start; nil for what it does not.
  QVSB_METHOD(NSString, getActivityPasteboardKey, "getActivityPasteboardKey")
  QVSB_METHOD(NSData, getAppIconData, "getAppIconData")
  QVSB_METHOD(NSString, getPasscodeExtensionBundleId, "getPasscodeExtensionBundleId")
  QVSB_METHOD(NSData, getPasscodeExtensionFK, "getPasscodeExtensionFK")

  // How the host's frontmost controller wants to be held, as of the last start; a mask of 0 says nothing.
  QVSB_METHOD(BOOL, shouldAutorotate, "shouldAutorotate")
  QVSB_METHOD(UIInterfaceOrientationMask, supportedInterfaceOrientations, "supportedInterfaceOrientations")
  QVSB_METHOD(UIInterfaceOrientationMask, autoRotateToInterfaceOrientations, "autoRotateToInterfaceOrientations")

  QVSB_METHOD(void, setIsExtensionActive, "setIsExtensionActive:", BOOL)
  QVSB_METHOD(void, setExtensionWindow, "setExtensionWindow:", UIWindow)
  QVSB_METHOD(void, setWindowViewController, "setWindowViewController:", UIViewController)
};

/// Makes the class known to the runtime; once, at load.
Class registerQVSBPasscodeExtensionManager();

} // namespace qvsb
