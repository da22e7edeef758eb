// The extension window's controller, alone: the manager hands its results to the SDK, and nobody presents anything.
#pragma once

#include "ExtensionTest.h"

class PasscodeWindow : public ExtensionTest {
protected:
  void SetUp() override;
  void TearDown() override;

  /// What is on hand in the request that the controller made: the dictionary of its one attachment.
  NSDictionary *request();
  /// The main bundle's information from here on.
  static void setInfo(NSDictionary *info);
  static void setBundleIdentifier(NSString *identifier);

  UIViewController<QVPasscodeWindowController> *controller = nil;
};
