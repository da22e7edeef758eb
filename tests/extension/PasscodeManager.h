// The manager above a host's windows. The window's controller launches nothing.
#pragma once

#include "ExtensionTest.h"

class PasscodeManager : public ExtensionTest {
protected:
  void SetUp() override;

  /// Starts, and lets the window be shown.
  void startAndShow();

  static constexpr const char* kBusy = "log 0 -[QVSBPasscodeExtensionManager start]: Extension is already being "
                                       "displayed.";
  static constexpr const char* kNotActive = "log 0 -[QVSBPasscodeExtensionManager start]: Application is not in active "
                                            "state.";
  id<QVPasscodeManager> passcode = nil;
};
