#include "../platform/Foundation/NSNotificationCenter.hpp"
#include "../policy/SBZorbelConfigHelper.hpp"
#include "HostDelegate.hpp"
#include "QVZorbelDelegateState.hpp"

namespace qvsb {

namespace {

/// A delegate that could not be given a `window` of its own, such as a proxy, may have none.
Strong<UIWindow> hostWindow() {
  const Strong<NSObject> host = hostDelegate();
  if (!hostAnswers<UIWindow>(host, "window"_sel)) {
    return nullptr;
  }
  return send<UIWindow>(host.get(), "window"_sel);
}

bool isDictation(UITextInputMode mode) {
  return mode.respondsToSelector("identifier"_sel) && "dictation"_ns.isEqual(mode.valueForKey("identifier"_ns));
}

} // namespace

void QVZorbelDelegateState::addObservers() {
  NSNotificationCenter::defaultCenter().addObserver_selector_name_object(
      self(), "didChangeKeyboardMode:"_sel, UITextInputCurrentInputModeDidChangeNotification(), nullptr);
}

void QVZorbelDelegateState::removeObservers() { NSNotificationCenter::defaultCenter().removeObserver(self()); }

void QVZorbelDelegateState::didChangeKeyboardMode(Object) {
  const Strong<UIWindow> window = hostWindow();
  const Strong<UITextInputMode> mode = window->textInputMode();
  if (!SBZorbelConfigHelper::isKeyboardDictationAllowed() && isDictation(mode)) {
    window->endEditing(YES);
    Zorbel::wrapperLogAtLevel_format(2, "Attempting to start Dictation. Dismissing the keyboard."_ns);
  }
}

} // namespace qvsb
