#include "UIApplication+Sandbox.hpp"

#include "../platform/Foundation/NSNumber.hpp"
#include "../platform/Foundation/NSThread.hpp"
#include "../platform/Foundation/NSURL.hpp"
#include "../platform/System/loader.hpp"
#include "../platform/UIKit/UIApplication.hpp"
#include "../platform/UIKit/UIEvent.hpp"
#include "../policy/ZorbelUtil.hpp"
#include "../startup/NSObject+QVSBJRSwizzle.hpp"
#include "AppDelegateProxy.hpp"
#include "UIApplicationDelegateSwizzle.hpp"
#include "ZBWrappedApplicationDelegate.hpp"

namespace qvsb {

namespace {

QVZorbelDelegate zorbelDelegate() { return QVZorbelDelegate(ZorbelDelegate()); }

/// Whether the host app's own code is the caller at index 1: its executable holds that address. Frameworks, the SDK and
/// this library lie elsewhere.
bool calledByHost(NSArray returnAddresses) {
  if (returnAddresses.count() == 0) {
    return false;
  }
  const NSUInteger address = NSNumber::from(returnAddresses.objectAtIndex(1)).unsignedIntegerValue();
  const void* const base = baseOfImageAt(reinterpret_cast<const void*>(address));
  return base && base == baseOfMainExecutable();
}

Object sb_delegate(UIApplication self, SEL) {
  constexpr const char* name = "-[UIApplication(Sandbox) sb_delegate]";
  bool host = false;
  {
    // Apps ask for their delegate in loops, and each time there is a number for every frame of the stack.
    const AutoreleasePool pool;
    host = calledByHost(NSThread::callStackReturnAddresses());
  }
  const auto delegate = send<Object>(self, "sb_delegate"_sel);
  if (host && isAppDelegateProxy(delegate)) {
    if (const Object original = zorbelDelegate().originalDelegate()) {
      Zorbel::wrapperLogAtLevel_format(3, "%s Returning original delegate %@"_ns, name, original);
      return original;
    }
  }
  Zorbel::wrapperLogAtLevel_format(0, "%s Returning delegate %@"_ns, name, delegate);
  return delegate;
}

void sb_setDelegate(UIApplication self, SEL, Object delegate) {
  Zorbel::wrapperLogAtLevel_format(3, "%s: Setting delegate %@"_ns, "-[UIApplication(Sandbox) sb_setDelegate:]",
                                   delegate);
  const QVZorbelDelegate launched = zorbelDelegate();
  if (launched && !isAppDelegateProxy(delegate)) {
    // From now on the application keeps its delegate, and what is meant for the new one is forwarded.
    launched.setOriginalDelegate(delegate);
    return;
  }
  if (!launched) {
    UIApplicationDelegateSwizzle(delegate);
  }
  send<void>(self, "sb_setDelegate:"_sel, delegate);
}

void sb_setDelegate_assumeOwnership(UIApplication self, SEL, Object delegate, BOOL assumeOwnership) {
  Zorbel::wrapperLogAtLevel_format(3, "%s: Setting delegate %@"_ns,
                                   "-[UIApplication(Sandbox) sb__setDelegate:assumeOwnership:]", delegate);
  UIApplicationDelegateSwizzle(delegate);
  send<void>(self, "sb__setDelegate:assumeOwnership:"_sel, delegate, assumeOwnership);
}

void sb_sendEvent(UIApplication self, SEL, UIEvent event) {
  ZorbelUtil::instance().resetInactivity(event);
  send<void>(self, "sb_sendEvent:"_sel, event);
}

BOOL sb_openURL(UIApplication self, SEL, NSURL url) {
  Zorbel::wrapperLogAtLevel_format(3, "%s"_ns, "-[UIApplication(Sandbox) sb_openURL:]");
  Zorbel::wrapperLogAtLevel_format(5, "URL: %@"_ns, url);
  return send<BOOL>(self, "sb_openURL:"_sel, url);
}

constexpr Hook hooks[] = {
    hook<&sb_setDelegate>("setDelegate:", "sb_setDelegate:"),
    hook<&sb_sendEvent>("sendEvent:", "sb_sendEvent:"),
    hook<&sb_setDelegate_assumeOwnership>("_setDelegate:assumeOwnership:", "sb__setDelegate:assumeOwnership:"),
    hook<&sb_delegate>("delegate", "sb_delegate"),
    hook<&sb_openURL>("openURL:", "sb_openURL:"),
};

} // namespace

constinit const HookGroup UIApplicationSandbox{"+[UIApplication(Sandbox) load]", "UIApplication",
                                               HookedMethods::instance, hooks};

void loadUIApplicationSandbox() {
  const Class cls(objc_lookUpClass(UIApplicationSandbox.className));
  NSError error;
  for (const Hook& hook : UIApplicationSandbox.hooks) {
    if (!qvsbjr_swizzleMethod(cls, selector(hook.selector), selector(hook.replacement.selector), &error)) {
      Zorbel::wrapperLogAtLevel_format(1, "%@"_ns, error.localizedDescription());
    }
  }
}

} // namespace qvsb
