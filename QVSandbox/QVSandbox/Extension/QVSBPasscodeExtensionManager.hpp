#pragma once

#include "../platform/Foundation/NSObject.hpp"

namespace qvsb {

/// Shows the management app's passcode extension above the host app. As long as the class does not exist, every
/// question is answered with NO and nothing is started or stopped.
class QVSBPasscodeExtensionManager : public NSObject {
  QVSB_HANDLE(QVSBPasscodeExtensionManager, NSObject)
  QVSB_CLASS_METHOD(QVSBPasscodeExtensionManager, sharedInstance, "sharedInstance")
  QVSB_METHOD(BOOL, isPasscodeExtensionActive, "isPasscodeExtensionActive")
  QVSB_METHOD(BOOL, canAppDisplayPasscodeExtension, "canAppDisplayPasscodeExtension")
  QVSB_METHOD(void, start, "start")
  QVSB_METHOD(void, stop, "stop")
};

} // namespace qvsb
