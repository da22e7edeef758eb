#include "HookReasons.h"

#include <algorithm>
#include <array>

namespace qvdevice {

namespace {

constexpr std::string_view kPasteboard = "`allowsPasteboard`: the SDK's `pasteboardPolicy`";
constexpr std::string_view kPrinting = "`allowsPrinting`: the SDK's `printPolicy`";
constexpr std::string_view kOpenIn =
    "`allowsOpenInWithAppId:`: the SDK's `openInPolicy` and, where that is a whitelist, `openInWhitelist`";
constexpr std::string_view kExcluded =
    "`mergeExcludedActivityTypes:`: the SDK's `pasteboardPolicy`, `printPolicy`, `openInPolicy` and `openInWhitelist`";
constexpr std::string_view kFilter = "`mergeExcludedActivityTypes:` once, then `allowsOpenInWithAppId:` for each "
                                     "activity that is left";

constexpr std::string_view kRaised = "Once the platform has written the file, raises its protection when it has none.";

constexpr auto kClasses = std::to_array<HookedClass>({
    {"UIApplication", "+[UIApplication(Sandbox) load]",
     "Through the application the library finds the host's delegate, whose class nobody knew when it was built, and "
     "sees what the user does and which URLs the app opens."},
    {kDelegate, "UIApplicationDelegateSwizzle",
     "Methods put onto the class of the delegate that the app sets. The host's own method, if it has one, runs as "
     "before; where it has none, the method is there all the same."},
    {"UICalloutBar", "UICalloutBarSandboxInit", "The edit menu over a selection is a way to the pasteboard."},
    {"UIMenuController", "UIMenuControllerSandboxInit", "An app may add items of its own to the edit menu."},
    {"UIDocumentInteractionController", "UIDocumentInteractionControllerSandboxInit",
     "The open-in menu hands a document to another app."},
    {"UIPrintInteractionController", "UIPrintInteractionControllerSandboxInit", "Paper leaves the device."},
    {"UIActivityViewController", "UIActivityViewControllerSandboxInit",
     "The share sheet leads to other apps, to the system's services, to the pasteboard and to the printer. What it "
     "offers and what it performs are looked at apart, because the platform finds activities in several ways, which "
     "differ between its releases."},
    {"NSArray", "NSArraySandboxInit", "An array writes itself to a file."},
    {"NSData", "NSDataSandboxInit", "Data writes itself to a file."},
    {"NSDictionary", "NSDictionarySandboxInit", "A dictionary writes itself to a file."},
    {"NSFileManager", "NSFileManagerSandboxInit", "Files and folders are made, and given attributes."},
    {"NSFileWrapper", "NSFileWrapperSandboxInit", "A file or a whole package is written."},
    {"NSKeyedArchiver", "NSKeyedArchiverSandboxInit", "Objects are archived to a file."},
    {"NSPersistentStoreCoordinator", "NSPersistentStoreCoordinatorSandboxInit", "A database is opened or made."},
    {"NSString", "NSStringSandboxInit", "Text writes itself to a file."},
    {"UIDocument", "UIDocumentSandboxInit", "A document is saved, by the platform or by the app's own methods."},
});

constexpr auto kReasons = std::to_array<HookReason>({
    {"UIApplication", "setDelegate:", "sb_setDelegate:",
     "Puts the library's methods onto the delegate's class. After launch the application keeps the delegate that it "
     "has, and another one is only remembered."},
    {"UIApplication", "sendEvent:", "sb_sendEvent:",
     "Tells the SDK that the user is active, then delivers the event: the SDK locks an app that lies idle."},
    {"UIApplication", "_setDelegate:assumeOwnership:", "sb__setDelegate:assumeOwnership:",
     "The same as `setDelegate:` for the platform's private setter, at any time."},
    {"UIApplication", "delegate", "sb_delegate",
     "Shows the app's own code its own delegate where the SDK has put a proxy in front of it, so that the app finds "
     "what it has set."},
    {"UIApplication", "openURL:", "sb_openURL:", "Logs the URL and opens it, whatever the policies are."},

    {kDelegate, "application:willFinishLaunchingWithOptions:", "zb_application:willFinishLaunchingWithOptions:",
     "Keeps launch options with a URL that is the SDK's own business from the host."},
    {kDelegate, "application:didFinishLaunchingWithOptions:", "zb_application:didFinishLaunchingWithOptions:",
     "Makes the SDK's delegate and starts the SDK, then lets the host launch in the same call; keeps the SDK's own "
     "URLs from it."},
    {kDelegate, "applicationDidBecomeActive:", "zb_applicationDidBecomeActive:",
     "After the host, even if it raises: notes what the pasteboard holds."},
    {kDelegate, "applicationWillResignActive:", "zb_applicationWillResignActive:",
     "After the host, even if it raises: puts back what the pasteboard held before, so that nothing copied in the app "
     "is pasted in another.",
     kPasteboard},
    {kDelegate, "applicationWillTerminate:", "zb_applicationWillTerminate:",
     "After the host, even if it raises: puts back what the pasteboard held before.", kPasteboard},
    {kDelegate, "applicationDidEnterBackground:", "zb_applicationDidEnterBackground:",
     "After the host, even if it raises: takes the passcode extension off the screen."},
    {kDelegate, "applicationWillEnterForeground:", "zb_applicationWillEnterForeground:",
     "After the host, even if it raises: logs that the app comes back."},
    {kDelegate, "window", "zb_window",
     "Answers the host's window, or the one that was set for a host without such a property."},
    {kDelegate,
     "setWindow:", "zb_setWindow:", "Gives the host its window, or keeps it for a host without such a property."},
    {kDelegate, "application:openURL:options:", "zb_application:openURL:options:",
     "Hands a URL to the newest of three generations of the method that the host has."},

    {"UICalloutBar", "targetForAction:", "sb_targetForAction:",
     "Finds no target for Copy and Cut without leave to copy, so that the menu does not offer them.", kPasteboard},
    {"UIMenuController",
     "setMenuItems:", "sb_setMenuItems:", "Logs title and action of each item, and sets them as they are."},
    {"UIDocumentInteractionController",
     "_applications:", "sb__applications:", "Leaves only the apps in the list that may have the document.", kOpenIn},
    {"UIPrintInteractionController", "isPrintingAvailable", "sb_isPrintingAvailable",
     "Answers that printing is available only when the device can print and the policies allow it.", kPrinting},

    {"UIActivityViewController", "initWithActivityItems:applicationActivities:",
     "sb_initWithActivityItems:applicationActivities:", "Excludes from a new sheet what the policies forbid.",
     kExcluded},
    {"UIActivityViewController", "setExcludedActivityTypes:", "sb_setExcludedActivityTypes:",
     "Adds what the policies forbid to what the app excludes.", kExcluded},
    {"UIActivityViewController", "_availableActivitiesForItems:", "sb__availableActivitiesForItems:",
     "Takes forbidden activities off the sheet's list.", kFilter},
    {"UIActivityViewController", "_availableActivities", "sb__availableActivities",
     "Takes forbidden activities off the sheet's list.", kFilter},
    {"UIActivityViewController", "_performActivityOfType:", "sb__performActivityOfType:",
     "Performs an activity only when it may have the data, however it came to be offered.", kOpenIn},
    {"UIActivityViewController", "_performActivity:", "sb__performActivity:",
     "Performs an activity only when it may have the data, however it came to be offered.", kOpenIn},
    {"UIActivityViewController",
     "shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismissPresentation:completion:",
     "sb_shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismiss:completion:",
     "Before a share extension gets the data of an open-in: refuses and closes the sheet when the app may not have "
     "it.",
     kOpenIn},
    {"UIActivityViewController",
     "shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:",
     "sb_shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:",
     "Before the app performs what a share extension asks for: refuses and closes the sheet when the extension may "
     "not have the data.",
     kOpenIn},

    {"NSArray", "writeToFile:atomically:", "sb_writeToFile:atomically:", kRaised},
    {"NSArray", "writeToURL:atomically:", "sb_writeToURL:atomically:", kRaised},
    {"NSData", "writeToFile:atomically:", "sb_writeToFile:atomically:", kRaised},
    {"NSData", "writeToURL:atomically:", "sb_writeToURL:atomically:", kRaised},
    {"NSData", "writeToFile:options:error:", "sb_writeToFile:options:error:", kRaised},
    {"NSData", "writeToURL:options:error:", "sb_writeToURL:options:error:", kRaised},
    {"NSDictionary", "writeToFile:atomically:", "sb_writeToFile:atomically:", kRaised},
    {"NSDictionary", "writeToURL:atomically:", "sb_writeToURL:atomically:", kRaised},
    {"NSFileManager", "createDirectoryAtURL:withIntermediateDirectories:attributes:error:",
     "sb_createDirectoryAtURL:withIntermediateDirectories:attributes:error:",
     "Raises the protection of the folder that is named, not of those made on the way to it."},
    {"NSFileManager", "createDirectoryAtPath:withIntermediateDirectories:attributes:error:",
     "sb_createDirectoryAtPath:withIntermediateDirectories:attributes:error:",
     "Raises the protection of the folder that is named, not of those made on the way to it."},
    {"NSFileManager", "createFileAtPath:contents:attributes:", "sb_createFileAtPath:contents:attributes:", kRaised},
    {"NSFileManager", "setAttributes:ofItemAtPath:error:", "sb_setAttributes:ofItemAtPath:error:",
     "Raises the protection again of an item from which the app has just taken it."},
    {"NSFileWrapper",
     "writeToURL:options:originalContentsURL:error:", "sb_writeToURL:options:originalContentsURL:error:",
     "Raises the protection of the item at the top; what lies in a package is left alone."},
    {"NSKeyedArchiver", "archiveRootObject:toFile:", "sb_archiveRootObject:toFile:", kRaised},
    {"NSPersistentStoreCoordinator", "addPersistentStoreWithType:configuration:URL:options:error:",
     "sb_addPersistentStoreWithType:configuration:URL:options:error:",
     "Before the store is added: options that ask for no protection ask for it. Without the key the platform "
     "protects the store by itself."},
    {"NSString", "writeToFile:atomically:encoding:error:", "sb_writeToFile:atomically:encoding:error:", kRaised},
    {"NSString", "writeToURL:atomically:encoding:error:", "sb_writeToURL:atomically:encoding:error:", kRaised},
    {"UIDocument", "saveToURL:forSaveOperation:completionHandler:", "sb_saveToURL:forSaveOperation:completionHandler:",
     "Raises the file's protection before the app hears that it has been saved."},
    {"UIDocument", "writeContents:andAttributes:safelyToURL:forSaveOperation:error:",
     "sb_writeContents:andAttributes:safelyToURL:forSaveOperation:error:", kRaised},
    {"UIDocument", "writeContents:toURL:forSaveOperation:originalContentsURL:error:",
     "sb_writeContents:toURL:forSaveOperation:originalContentsURL:error:", kRaised},
});

} // namespace

std::span<const HookedClass> hookedClasses() { return kClasses; }

std::span<const HookReason> hookReasons() { return kReasons; }

std::string hookedClassOf(const nlohmann::ordered_json& hook) {
  const bool ofDelegate = hook.value("replacement", "").starts_with("zb_");
  return ofDelegate ? std::string(kDelegate) : hook.value("class", "");
}

const HookReason* reasonOf(const nlohmann::ordered_json& hook) {
  const std::string cls = hookedClassOf(hook);
  const std::string replacement = hook.value("replacement", "");
  const auto reason = std::find_if(kReasons.begin(), kReasons.end(), [&](const HookReason& each) {
    return each.cls == cls && each.replacement == replacement;
  });
  return reason == kReasons.end() ? nullptr : &*reason;
}

nlohmann::ordered_json completed(nlohmann::ordered_json hook) {
  if (const HookReason* reason = reasonOf(hook); reason != nullptr && hook["state"] == "absent") {
    hook["selector"] = reason->selector;
  }
  const auto cls = std::find_if(kClasses.begin(), kClasses.end(),
                                [name = hookedClassOf(hook)](const HookedClass& each) { return each.name == name; });
  if (hook["installer"].is_null() && cls != kClasses.end()) {
    hook["installer"] = cls->installer;
  }
  return hook;
}

} // namespace qvdevice
