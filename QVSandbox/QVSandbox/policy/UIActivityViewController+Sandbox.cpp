#include "../platform/Foundation/NSSet.hpp"
#include "../platform/UIKit/UIActivityViewController.hpp"
#include "../platform/objc/exception.hpp"
#include "Constants.hpp"
#include "SharingSandbox.hpp"
#include "ZorbelUtil.hpp"

namespace qvsb {

namespace {

NSString remoteOpenInPrefix() { return "com.apple.UIKit.activity.RemoteOpenInApplication-"_ns; }

/// A string, or nil for anything else: nothing but a string names an app.
NSString stringOrNil(Object value) {
  return NSObject::from(value).isKindOfClass(NSString::classObject()) ? NSString::from(value) : NSString();
}

NSString activityTypeOf(Object activity) {
  return NSObject::from(activity).respondsToSelector("activityType"_sel)
             ? stringOrNil(send<Object>(activity, "activityType"_sel))
             : NSString();
}

/// What the object has under the key; nil also when it knows no such key, which it tells by raising.
Object valueIn(Object object, NSString key) {
  Object value;
  tryCatch([&] { value = send<Object>(object, "valueForKey:"_sel, key); }, [](Object) { return true; });
  return value;
}

BOOL allowsOpenInWith(NSString appIdentifier) { return ZorbelUtil::instance().allowsOpenInWithAppId(appIdentifier); }

NSString appIdentifierByStrippingIOSPart(Object, SEL, NSString type) {
  for (const NSString prefix : {UIActivityTypeImportToAppIOS10, UIActivityTypeOpenWithAppIOS9}) {
    if (type.hasPrefix(prefix)) {
      return type.stringByReplacingOccurrencesOfString_withString(prefix, ""_ns);
    }
  }
  return type;
}

NSString identifierOf(UIActivityViewController sheet, Object activity) {
  return send<NSString>(sheet, "appIdentifierByStrippingIOSPart:"_sel, activityTypeOf(activity));
}

/// The array itself where it can be changed, otherwise a copy: a platform that answers another kind of array offers no
/// more than others, and one that answers no array at all offers nothing.
NSMutableArray changeable(NSArray activities) {
  if (activities.isKindOfClass(NSMutableArray::classObject())) {
    return NSMutableArray::from(activities);
  }
  return NSMutableArray::arrayWithArray(activities.isKindOfClass(NSArray::classObject()) ? activities
                                                                                         : NSArray::array());
}

NSArray arrayByFilteringBlockedActivities(UIActivityViewController self, SEL, NSArray activities) {
  if (!activities) {
    return nullptr;
  }
  const NSMutableArray kept = changeable(activities);
  const NSSet excluded = NSSet::setWithArray(ZorbelUtil::instance().mergeExcludedActivityTypes(nullptr));
  // From the end, so that a removal moves nothing that is still to be looked at.
  for (NSUInteger index = kept.count(); index-- > 0;) {
    const NSString identifier = identifierOf(self, kept.objectAtIndex(index));
    if (excluded.containsObject(identifier) || !allowsOpenInWith(identifier)) {
      kept.removeObjectAtIndex(index);
    }
  }
  return kept;
}

void sb_setExcludedActivityTypes(UIActivityViewController self, SEL, NSArray types) {
  send<void>(self, "sb_setExcludedActivityTypes:"_sel, ZorbelUtil::instance().mergeExcludedActivityTypes(types));
}

/// The platform's own setter, for types that are merged already. Where the exchange was refused that is still the
/// setter of the platform's name, and the other one would be ours and call itself without end.
SEL platformSetter(UIActivityViewController sheet) {
  const SEL prefixed = "sb_setExcludedActivityTypes:"_sel;
  const IMP ours = detail::implementationOf<&sb_setExcludedActivityTypes>();
  return class_getMethodImplementation(classOf(sheet).rawClass(), prefixed.raw) == ours
             ? "setExcludedActivityTypes:"_sel
             : prefixed;
}

Object sb_initWithActivityItems_applicationActivities(UIActivityViewController self, SEL, NSArray items,
                                                      NSArray activities) {
  const auto sheet =
      send<UIActivityViewController>(self, "sb_initWithActivityItems:applicationActivities:"_sel, items, activities);
  if (sheet) {
    send<void>(sheet, platformSetter(sheet), ZorbelUtil::instance().mergeExcludedActivityTypes(nullptr));
  }
  Zorbel::wrapperLogAtLevel_format(3, "Excluded activities: %@"_ns, sheet.excludedActivityTypes());
  return sheet;
}

NSArray sb_availableActivitiesForItems(UIActivityViewController self, SEL, NSArray items) {
  return send<NSArray>(self, "arrayByFilteringBlockedActivities:"_sel,
                       send<NSArray>(self, "sb__availableActivitiesForItems:"_sel, items));
}

NSArray sb_availableActivities(UIActivityViewController self, SEL) {
  return send<NSArray>(self, "arrayByFilteringBlockedActivities:"_sel,
                       send<NSArray>(self, "sb__availableActivities"_sel));
}

/// Whether the activity may be performed; says so in the log. The remote way to another app always may: which app it is
/// comes out, and is judged, when the share extension asks.
bool mayPerform(const char* method, NSString identifier) {
  if (allowsOpenInWith(identifier) || UIActivityTypeOpenWithAppIOS11.isEqualToString(identifier)) {
    Zorbel::wrapperLogAtLevel_format(3, "(%s) Performing action with activity identifier %@"_ns, method, identifier);
    return true;
  }
  Zorbel::wrapperLogAtLevel_format(3, "(%s) Blocking action with activity identifier %@"_ns, method, identifier);
  return false;
}

void sb_performActivity(UIActivityViewController self, SEL, Object activity) {
  if (mayPerform("-[UIActivityViewController(Sandbox) sb__performActivity:]", identifierOf(self, activity))) {
    send<void>(self, "sb__performActivity:"_sel, activity);
  }
}

void sb_performActivityOfType(UIActivityViewController self, SEL, NSString type) {
  if (mayPerform("-[UIActivityViewController(Sandbox) sb__performActivityOfType:]", type)) {
    send<void>(self, "sb__performActivityOfType:"_sel, type);
  }
}

/// Whether the share extension may have the data for that app; if not, the whole sheet goes.
bool mayOpenIn(UIActivityViewController sheet, const char* method, NSString appIdentifier) {
  if (allowsOpenInWith(appIdentifier)) {
    Zorbel::wrapperLogAtLevel_format(5, "%s: Allow open in with app %@"_ns, method, appIdentifier);
    return true;
  }
  Zorbel::wrapperLogAtLevel_format(0, "%s: Restrict open in with app %@"_ns, method, appIdentifier);
  sheet.dismissViewControllerAnimated_completion(YES, nullptr);
  return false;
}

void sb_shareExtensionServiceWillPerform(UIActivityViewController self, SEL, Object request, BOOL dismiss,
                                         Block<void(Object)> completion) {
  const NSString type = stringOrNil(valueIn(request, "activityType"_ns));
  const Object metadata = valueIn(request, "activitySpecificMetadata"_ns);
  const NSString appIdentifier =
      type.hasPrefix(remoteOpenInPrefix()) ? stringOrNil(valueIn(metadata, "applicationIdentifier"_ns)) : type;
  if (mayOpenIn(self,
                "-[UIActivityViewController(Sandbox) "
                "sb_shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismiss:completion:]",
                appIdentifier)) {
    send<void>(self, "sb_shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismiss:completion:"_sel,
               request, dismiss, completion);
  }
}

void sb_shareExtensionServiceRequestPerform(UIActivityViewController self, SEL, NSString bundleIdentifier) {
  if (mayOpenIn(self,
                "-[UIActivityViewController(Sandbox) "
                "sb_shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:]",
                bundleIdentifier)) {
    send<void>(self,
               "sb_shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:"_sel,
               bundleIdentifier);
  }
}

constexpr MethodEntry methods[] = {
    method<&arrayByFilteringBlockedActivities>("arrayByFilteringBlockedActivities:"),
    method<&appIdentifierByStrippingIOSPart>("appIdentifierByStrippingIOSPart:"),
};

// Most are the platform's own affair, and come and go with its releases.
constexpr Hook hooks[] = {
    hook<&sb_initWithActivityItems_applicationActivities>("initWithActivityItems:applicationActivities:",
                                                          "sb_initWithActivityItems:applicationActivities:"),
    hook<&sb_setExcludedActivityTypes>("setExcludedActivityTypes:", "sb_setExcludedActivityTypes:"),
    hookIfPresent<&sb_availableActivitiesForItems>("_availableActivitiesForItems:", "sb__availableActivitiesForItems:"),
    hookIfPresent<&sb_availableActivities>("_availableActivities", "sb__availableActivities"),
    hookIfPresent<&sb_performActivityOfType>("_performActivityOfType:", "sb__performActivityOfType:"),
    hookIfPresent<&sb_performActivity>("_performActivity:", "sb__performActivity:"),
    hookIfPresent<&sb_shareExtensionServiceWillPerform>(
        "shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismissPresentation:completion:",
        "sb_shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismiss:completion:"),
    hookIfPresent<&sb_shareExtensionServiceRequestPerform>(
        "shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:",
        "sb_shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:"),
};

} // namespace

constinit const Category UIActivityViewControllerFiltering{"UIActivityViewController", "Sandbox", methods, {}};

constinit const HookGroup UIActivityViewControllerSandbox{"UIActivityViewControllerSandboxInit",
                                                          "UIActivityViewController", HookedMethods::instance, hooks};

} // namespace qvsb

void UIActivityViewControllerSandboxInit() {
  using namespace qvsb;
  const NSString startLine = "Sandboxing UIActivityViewController"_ns;
  if (!UIActivityViewController::classObject()) {
    Zorbel::wrapperLogAtLevel_format(3, startLine);
    Zorbel::wrapperLogAtLevel_format(0, "UIActivityViewController Class not found."_ns);
    return;
  }
  installHooks(UIActivityViewControllerSandbox, startLine);
}
