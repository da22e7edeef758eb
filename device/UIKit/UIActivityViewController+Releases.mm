// The share sheet's private methods. They come and go with the platform's releases, and other code that watches the
// sheet looks for them by name, so what this device's release does not have must not be there at all:
//
//                                            8.2   9     10    11    13    17
//   _availableActivitiesForItems:            yes   yes   yes
//   _availableActivities                     yes   yes   yes   yes   yes
//   _performActivityOfType:                  yes   yes   yes
//   _performActivity:                        yes   yes   yes   yes   yes   yes
//   shareExtensionService...                                   yes
//   setShouldMatchOnlyUserElectedExtensions:       yes   yes   yes   yes
//
// Up to 10 the sheet finds its activities in the app's process; the older two methods stand for that. In 11 part of it
// moved to a service in a process of its own, which calls the app back (the two methods whose names begin with
// shareExtensionService). 13 gave these callbacks other names, and 17 draws all of the sheet in the service and asks
// the app only to perform. The last method of the table came with 8.3. Between two releases of the table the older
// one's column holds.
#import "ShareSheet.h"

#import "OtherApps.h"

#include <objc/runtime.h>

#include <string>

#include "container/Settings.h"

/// What the service asks the app with. Read by key only.
@interface QVDeviceShareDataRequest : NSObject {
@public
  NSString *activityType;
  NSDictionary *activitySpecificMetadata;
}
@end

@implementation QVDeviceShareDataRequest

- (void)dealloc {
  [activityType release];
  [activitySpecificMetadata release];
  [super dealloc];
}

- (NSString *)activityType {
  return activityType;
}

- (NSDictionary *)activitySpecificMetadata {
  return activitySpecificMetadata;
}

@end

/// The platform's private methods, declared for those that call them here.
@interface UIActivityViewController (Private)
- (id)_availableActivitiesForItems:(id)items;
- (id)_availableActivities;
- (void)_performActivityOfType:(id)type;
- (void)_performActivity:(id)activity;
- (void)shareExtensionServiceWillPerformInServiceActivityWithDataRequest:(id)request
                                                     dismissPresentation:(BOOL)dismiss
                                                              completion:(void (^)(id data))completion;
- (void)shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:(id)identifier;
- (NSArray *)activityItems;
@end

namespace {

constexpr char kWillPerform[] =
    "shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismissPresentation:completion:";
constexpr char kRequestPerform[] =
    "shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:";

bool has(const char *name) { return [UIActivityViewController instancesRespondToSelector:sel_registerName(name)]; }

/// Lets the service ask for the data that it hands to another app.
void askOfService(UIActivityViewController *self, QVDeviceOpenInActivity *activity) {
  QVDeviceShareDataRequest *const request = [[[QVDeviceShareDataRequest alloc] init] autorelease];
  request->activityType = [[activity activityType] copy];
  request->activitySpecificMetadata = [@{@"applicationIdentifier" : [activity applicationIdentifier]} retain];
  [self shareExtensionServiceWillPerformInServiceActivityWithDataRequest:request dismissPresentation:YES
                                                              completion:^(id){
                                                              }];
}

} // namespace

// Under names of the device's own, so that the compiler writes their types; they get their real names at load.
@implementation UIActivityViewController (QVDevicePrivateMethods)

- (id)qvdevice_private__availableActivitiesForItems:(id)items {
  return [self qvdevice_activitiesForItems:items];
}

- (id)qvdevice_private__availableActivities {
  NSArray *const items = [self activityItems];
  return has("_availableActivitiesForItems:") ? [self _availableActivitiesForItems:items]
                                              : [self qvdevice_activitiesForItems:items];
}

// For whoever knows the type alone: whether the sheet offers it or not.
- (void)qvdevice_private__performActivityOfType:(id)type {
  for (UIActivity *activity in QVDeviceActivities())
    if ([[activity activityType] isEqual:type]) {
      [self _performActivity:activity];
      return;
    }
}

- (void)qvdevice_private__performActivity:(id)activity {
  const bool byService =
      [activity isKindOfClass:[QVDeviceOpenInActivity class]] && qvdevice::isSystemVersionAtLeast("11");
  if (!byService)
    [self qvdevice_perform:activity];
  else if (has(kWillPerform))
    askOfService(self, activity);
}

// The device has no extension that its user has not chosen: there is nothing to leave out.
- (void)qvdevice_private_setShouldMatchOnlyUserElectedExtensions:(BOOL)onlyElected {
  _matchesOnlyElected = onlyElected;
}

- (BOOL)qvdevice_private_shouldMatchOnlyUserElectedExtensions {
  return _matchesOnlyElected;
}

// Nobody but the service makes requests; what is none names no app.
- (void)qvdevice_private_shareExtensionServiceWillPerformInServiceActivityWithDataRequest:(id)request
                                                                      dismissPresentation:(BOOL)dismiss
                                                                               completion:(void (^)(id))completion {
  if ([request isKindOfClass:[QVDeviceShareDataRequest class]])
    for (LSApplicationProxy *each in QVDeviceAppsThatOpenDocuments())
      if ([[each applicationIdentifier]
              isEqual:[[request activitySpecificMetadata] objectForKey:@"applicationIdentifier"]])
        [self qvdevice_perform:[QVDeviceOpenInActivity activityWithApplication:each]];
  if (completion) completion([self activityItems]);
  if (dismiss) [self dismissViewControllerAnimated:YES completion:nil];
}

- (void)qvdevice_private_shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:
    (id)identifier {
  for (QVDeviceShareExtension *each in QVDeviceShareExtensions())
    if ([[each identifier] isEqual:identifier]) {
      [self _performActivity:[QVDeviceExtensionActivity activityWithExtension:each]];
      return;
    }
}

@end

@implementation UIActivityViewController (QVDeviceReleases)

+ (void)load {
  const auto before = [](const char *release) { return !qvdevice::isSystemVersionAtLeast(release); };
  const bool calledBack = !before("11") && before("13");
  const struct {
    const char *name;
    bool present;
  } methods[] = {
      {"_availableActivitiesForItems:", before("11")},
      {"_availableActivities", before("17")},
      {"_performActivityOfType:", before("11")},
      {"_performActivity:", true},
      {"setShouldMatchOnlyUserElectedExtensions:", !before("8.3") && before("17")},
      {"shouldMatchOnlyUserElectedExtensions", !before("8.3") && before("17")},
      {kWillPerform, calledBack},
      {kRequestPerform, calledBack},
  };
  for (const auto &method : methods) {
    if (!method.present) continue;
    const std::string ours = std::string("qvdevice_private_") + method.name;
    const Method written = class_getInstanceMethod(self, sel_registerName(ours.c_str()));
    class_addMethod(self, sel_registerName(method.name), method_getImplementation(written),
                    method_getTypeEncoding(written));
  }
}

- (NSArray *)qvdevice_list {
  return has("_availableActivities") ? [self _availableActivities]
                                     : [self qvdevice_activitiesForItems:[self activityItems]];
}

// Up to 10 and from 13 on, the sheet performs all that is chosen itself. In 11 the service comes first: it asks the app
// to perform what is to happen there, and hands a document to another app on its own once the app has given its data.
- (void)qvdevice_performChosen:(UIActivity *)activity {
  if ([activity isKindOfClass:[QVDeviceExtensionActivity class]] && has(kRequestPerform))
    [self shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:[activity
                                                                                                        activityType]];
  else
    [self _performActivity:activity];
}

@end
