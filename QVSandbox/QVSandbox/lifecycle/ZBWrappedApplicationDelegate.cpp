#include "ZBWrappedApplicationDelegate.hpp"

#include "../platform/Foundation/NSURL.hpp"
#include "../platform/UIKit/UIApplication.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/exception.hpp"
#include "../platform/objc/method.hpp"
#include "../platform/objc/raise.hpp"

namespace qvsb {

namespace {

constinit QVZorbelDelegate _zorbelDelegate;

void logName(const char* name) { Zorbel::wrapperLogAtLevel_format(3, "%s"_ns, name); }

/// Whether the app was launched with a URL that is the SDK's own business.
bool launchedForZorbel(NSDictionary options) {
  return options && Zorbel::isAppScheme(options.objectForKey(UIApplicationLaunchOptionsURLKey()));
}

BOOL zb_application_willFinishLaunchingWithOptions(NSObject self, SEL, UIApplication application,
                                                   NSDictionary options) {
  logName("-[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]");
  Zorbel::wrapperLogAtLevel_format(5, "%@"_ns, options);
  const SEL own = "zb_application:willFinishLaunchingWithOptions:"_sel;
  if (!self.respondsToSelector(own)) {
    return YES;
  }
  return send<BOOL>(self, own, application, launchedForZorbel(options) ? NSDictionary() : options);
}

BOOL zb_application_didFinishLaunchingWithOptions(NSObject self, SEL, UIApplication application, NSDictionary options) {
  constexpr const char* name = "-[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]";
  logName(name);
  Zorbel::wrapperLogAtLevel_format(5, "%s Launch options: %@"_ns, name, options);
  if (!_zorbelDelegate) {
    _zorbelDelegate = QVZorbelDelegate::from(QVZorbelDelegate::alloc().init());
    _zorbelDelegate.setOriginalDelegate(UIApplication::sharedApplication().delegate());
  }
  _zorbelDelegate.applicationDidFinishLaunchingWithOptions(options);
  NSDictionary hostOptions = options;
  if (launchedForZorbel(options)) {
    Zorbel::wrapperLogAtLevel_format(5, "App launched with Zorbel URL %@"_ns,
                                     options.objectForKey(UIApplicationLaunchOptionsURLKey()));
    hostOptions = nullptr;
  }
  const SEL own = "zb_application:didFinishLaunchingWithOptions:"_sel;
  const BOOL launched = self.respondsToSelector(own) ? send<BOOL>(self, own, application, hostOptions) : YES;
  Zorbel::wrapperLogAtLevel_format(
      5, "Done executing AppDelegate's original implementation for application:didFinishLaunchingWithOptions:"_ns);
  return launched;
}

/// The host may know any of three generations of the method, of which it gets the newest.
BOOL zb_application_openURL_options(NSObject self, SEL, UIApplication application, NSURL url, NSDictionary options) {
  constexpr const char* name = "-[ZBWrappedApplicationDelegate zb_application:openURL:options:]";
  logName(name);
  const Object source = options.objectForKey(UIApplicationLaunchOptionsSourceApplicationKey());
  Zorbel::wrapperLogAtLevel_format(5, "%s from %@ (%@) (%@)"_ns, name, source, url, options);
  if (const SEL own = "zb_application:openURL:options:"_sel; self.respondsToSelector(own)) {
    return send<BOOL>(self, own, application, url, options);
  }
  if (const SEL older = "application:openURL:sourceApplication:annotation:"_sel; self.respondsToSelector(older)) {
    return send<BOOL>(self, older, application, url, source,
                      options.objectForKey(UIApplicationLaunchOptionsAnnotationKey()));
  }
  if (const SEL oldest = "application:handleOpenURL:"_sel; self.respondsToSelector(oldest)) {
    return send<BOOL>(self, oldest, application, url);
  }
  return YES;
}

/// The host's own method, if it has one, and then `follow`, even if the host raises: its exception goes on afterwards.
template <class Follow> void runHostThen(NSObject self, SEL own, UIApplication application, Follow follow) {
  tryFinally(
      [&] {
        if (self.respondsToSelector(own)) {
          send<void>(self, own, application);
        }
      },
      follow);
}

void zb_applicationDidBecomeActive(NSObject self, SEL, UIApplication application) {
  logName("-[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]");
  runHostThen(self, "zb_applicationDidBecomeActive:"_sel, application,
              [] { _zorbelDelegate.applicationDidBecomeActive(); });
}

void zb_applicationWillResignActive(NSObject self, SEL, UIApplication application) {
  logName("-[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]");
  runHostThen(self, "zb_applicationWillResignActive:"_sel, application,
              [] { _zorbelDelegate.applicationWillResignActive(); });
}

void zb_applicationWillTerminate(NSObject self, SEL, UIApplication application) {
  logName("-[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]");
  runHostThen(self, "zb_applicationWillTerminate:"_sel, application,
              [] { _zorbelDelegate.applicationWillTerminate(); });
}

void zb_applicationDidEnterBackground(NSObject self, SEL, UIApplication application) {
  logName("-[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]");
  runHostThen(self, "zb_applicationDidEnterBackground:"_sel, application,
              [] { _zorbelDelegate.applicationDidEnterBackground(); });
}

void zb_applicationWillEnterForeground(NSObject self, SEL, UIApplication application) {
  logName("-[ZBWrappedApplicationDelegate zb_applicationWillEnterForeground:]");
  runHostThen(self, "zb_applicationWillEnterForeground:"_sel, application,
              [] { _zorbelDelegate.applicationWillEnterForeground(); });
}

UIWindow zb_window(NSObject self, SEL) {
  logName("-[ZBWrappedApplicationDelegate zb_window]");
  const SEL own = "zb_window"_sel;
  return self.respondsToSelector(own) ? send<UIWindow>(self, own) : _zorbelDelegate.window();
}

void zb_setWindow(NSObject self, SEL, UIWindow window) {
  logName("-[ZBWrappedApplicationDelegate zb_setWindow:]");
  if (const SEL own = "zb_setWindow:"_sel; self.respondsToSelector(own)) {
    send<void>(self, own, window);
  } else {
    _zorbelDelegate.setWindow(window);
  }
}

void zb_markerMethod(NSObject, SEL) {
  logName("-[ZBWrappedApplicationDelegate zb_markerMethod]");
  // The line names nobody. A null string fills the "%s": without any argument the formatter would read whatever lies
  // where one belongs, and Foundation writes null as "(null)".
  Zorbel::wrapperLogAtLevel_format(
      5, "%s Marker method. If this method is present, we have already swizzled this class."_ns,
      static_cast<const char*>(nullptr));
}

constexpr MethodEntry instanceMethods[] = {
    method<&zb_application_willFinishLaunchingWithOptions>("zb_application:willFinishLaunchingWithOptions:"),
    method<&zb_application_didFinishLaunchingWithOptions>("zb_application:didFinishLaunchingWithOptions:"),
    method<&zb_application_openURL_options>("zb_application:openURL:options:"),
    method<&zb_applicationDidBecomeActive>("zb_applicationDidBecomeActive:"),
    method<&zb_applicationWillResignActive>("zb_applicationWillResignActive:"),
    method<&zb_applicationWillTerminate>("zb_applicationWillTerminate:"),
    method<&zb_applicationDidEnterBackground>("zb_applicationDidEnterBackground:"),
    method<&zb_applicationWillEnterForeground>("zb_applicationWillEnterForeground:"),
    method<&zb_window>("zb_window"),
    method<&zb_setWindow>("zb_setWindow:"),
    method<&zb_markerMethod>("zb_markerMethod"),
};

constexpr const char* kClassName = "ZBWrappedApplicationDelegate";

} // namespace

// By hand and not by Implements<>: the class has no instances, and so no state to be built in them.
Class registerZBWrappedApplicationDelegate() {
  objc_class* const raw = objc_allocateClassPair(NSObject::classObject().rawClass(), kClassName, 0);
  if (!raw) {
    raiseInconsistency({"class ", kClassName, " cannot be registered: the name is taken"});
  }
  const Class cls(raw);
  addMethods(cls, instanceMethods);
  if (const id protocol = objc_getProtocol("UIApplicationDelegate")) {
    class_addProtocol(raw, protocol);
  }
  objc_registerClassPair(raw);
  return cls;
}

} // namespace qvsb

qvsb::id ZorbelDelegate() { return qvsb::_zorbelDelegate.raw(); }
