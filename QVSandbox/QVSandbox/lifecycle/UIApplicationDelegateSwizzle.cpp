#include "UIApplicationDelegateSwizzle.hpp"

#include "../platform/Zorbel/Zorbel.hpp"
#include "../startup/swizzleMethod.hpp"
#include "AppDelegateProxy.hpp"

using namespace qvsb;

namespace {

struct Graft {
  const char* original;
  const char* replacement;
};

constexpr Graft grafts[] = {
    {"application:willFinishLaunchingWithOptions:", "zb_application:willFinishLaunchingWithOptions:"},
    {"application:didFinishLaunchingWithOptions:", "zb_application:didFinishLaunchingWithOptions:"},
    {"applicationDidBecomeActive:", "zb_applicationDidBecomeActive:"},
    {"applicationWillResignActive:", "zb_applicationWillResignActive:"},
    {"applicationWillTerminate:", "zb_applicationWillTerminate:"},
    {"applicationDidEnterBackground:", "zb_applicationDidEnterBackground:"},
    {"applicationWillEnterForeground:", "zb_applicationWillEnterForeground:"},
    {"window", "zb_window"},
    {"setWindow:", "zb_setWindow:"},
    // There is no such replacement, on purpose: the host's method stays, and every graft says so in the log.
    {"application:shouldAllowExtensionPointIdentifier:", "zb_application:shouldAllowExtensionPointIdentifier:"},
    {"application:openURL:options:", "zb_application:openURL:options:"},
};

void refuse(Class cls) {
  Zorbel::wrapperLogAtLevel_format(5, "Cannot swizzle methods for %@."_ns, NSStringFromClass(cls));
}

/// Marks the class, and with it its subclasses, as grafted.
void addMarker(Class cls) {
  Zorbel::wrapperLogAtLevel_format(5, "Adding marker to class %@"_ns, NSStringFromClass(cls));
  const SEL marker = "zb_markerMethod"_sel;
  const Method method = class_getInstanceMethod(classNamed<"ZBWrappedApplicationDelegate">().rawClass(), marker.raw);
  class_addMethod(cls.rawClass(), marker.raw, method_getImplementation(method), method_getTypeEncoding(method));
}

} // namespace

void UIApplicationDelegateSwizzle(Object delegate) {
  // A proxy is recognised before it is sent anything: it may answer with the class of what it stands for.
  if (const Class actual = classOf(delegate); isClassOfProxies(actual)) {
    refuse(actual);
    return;
  }
  // Key-value observing and others put a class of their own under an object and take it away again. Such an object goes
  // on answering with the class that its maker gave it, and that is the one that stays.
  const auto cls = send<Class>(delegate, "class"_sel);
  if (isClassOfProxies(cls)) {
    refuse(cls);
    return;
  }
  Zorbel::wrapperLogAtLevel_format(5, "%s called for class %@"_ns, "UIApplicationDelegateSwizzle",
                                   NSStringFromClass(cls));
  UIApplicationDelegateSwizzleMandatoryMethods(cls);
}

void UIApplicationDelegateSwizzleMandatoryMethods(Class cls) {
  if (class_getInstanceMethod(cls.rawClass(), "zb_markerMethod"_sel.raw)) {
    Zorbel::wrapperLogAtLevel_format(
        5, "We have already swizzled this class instance methods. No need to redo work and mess up the class."_ns);
    return;
  }
  for (const Graft& graft : grafts) {
    swizzleMethod(cls, selector(graft.original), selector(graft.replacement));
  }
  addMarker(cls);
}
