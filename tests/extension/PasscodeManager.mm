#include "PasscodeManager.h"

void PasscodeManager::SetUp() {
  ExtensionTest::SetUp();
  replaceMethod(windowControllerClass(), "displayExtension",
                reinterpret_cast<IMP>(+[](id, SEL) { note("displayExtension"); }));
  passcode = manager();
  take();
}

void PasscodeManager::startAndShow() {
  [passcode start];
  turnMainQueue();
  ASSERT_EQ([UIApplication sharedApplication].keyWindow, [passcode extensionWindow]);
}
