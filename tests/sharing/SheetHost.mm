// An app that shares one file under every combination of policies, by every way that this release's sheet has, and says
// what was offered and what has left it: one JSON object for each combination.
#import "Sharing.h"

#include <iostream>

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::json;

bool has(const char *name) { return [UIActivityViewController instancesRespondToSelector:sel_registerName(name)]; }

UIActivityViewController *sheet(NSArray *items) {
  UIActivityViewController *const sheet = [[[UIActivityViewController alloc] initWithActivityItems:items
                                                                             applicationActivities:nil] autorelease];
  [sharing::presenter() presentViewController:sheet animated:NO completion:nil];
  return sheet;
}

void dismiss() { [sharing::presenter() dismissViewControllerAnimated:NO completion:nil]; }

// One object for each pair, since a sheet may have several activities of one type: what was tried, what left the app.
template <class Try> Json tried(NSArray *items, const std::string &name, Try way) {
  UIActivityViewController *const shown = sheet(items);
  way(shown);
  dismiss();
  return Json{{"tried", name}, {"left", sharing::whatLeft()}};
}

std::string textOf(NSString *string) { return [string UTF8String]; }

Json underThesePolicies(NSArray *items) {
  Json result;
  result["offered"] = sharing::typesOf([sheet(items) qvdevice_offered]);
  dismiss();
  for (UIActivity *activity in sharing::allActivities()) {
    // Like a user who found a way to choose what is not there.
    result["chosen"].push_back(tried(items, textOf([activity activityTitle]),
                                     [&](UIActivityViewController *shown) { [shown qvdevice_choose:activity]; }));
    if (has("_performActivityOfType:"))
      result["byType"].push_back(tried(items, textOf([activity activityTitle]), [&](UIActivityViewController *shown) {
        [shown _performActivityOfType:[activity activityType]];
      }));
  }
  return result;
}

} // namespace

int main(int count, char **arguments) {
  if (count > 1 && std::string(arguments[1]) == "methods") {
    for (const char *name :
         {"_availableActivitiesForItems:", "_availableActivities", "_performActivityOfType:", "_performActivity:",
          "shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismissPresentation:completion:",
          "shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:"})
      if (has(name)) std::cout << "has " << name << std::endl;
    return 0;
  }
  @autoreleasepool {
    QVSharingSDK *const sdk = sharing::startSDK();
    sdk->openInWhitelist = [@[
      @"com.example.", @"com.apple.UIKit.activity.Mail", @"com.apple.UIKit.activity.CopyToPasteboard",
      @"com.apple.UIKit.activity.Print"
    ] retain];
    NSArray *const items = @[ sharing::file(@"letter.txt", @"secret") ];
    for (const bool ready : {false, true})
      for (sdk->openInPolicy = 0; sdk->openInPolicy <= 2; ++sdk->openInPolicy)
        for (sdk->pasteboardPolicy = 0; sdk->pasteboardPolicy <= 2; ++sdk->pasteboardPolicy)
          for (sdk->printPolicy = 0; sdk->printPolicy <= 1; ++sdk->printPolicy) {
            sdk->ready = ready;
            // As long as it is not ready the SDK's policies are not known: the one that allows most tells most.
            if (!ready && !(sdk->openInPolicy == 1 && sdk->pasteboardPolicy == 1 && sdk->printPolicy == 1)) continue;
            @autoreleasepool {
              Json result = underThesePolicies(items);
              result["ready"] = ready;
              result["openIn"] = sdk->openInPolicy;
              result["pasteboard"] = sdk->pasteboardPolicy;
              result["print"] = sdk->printPolicy;
              std::cout << result.dump() << std::endl;
            }
          }
    sharing::stopSDK(sdk);
  }
  return 0;
}
