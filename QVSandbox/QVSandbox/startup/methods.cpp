#include "methods.hpp"

#include "../Extension/AppWindowInfo.hpp"
#include "../Extension/QVSBApplicationExtensionViewController.hpp"
#include "../Extension/QVSBPasscodeExtensionManager.hpp"
#include "../Extension/QVSBPasscodeExtensionWindowViewController.hpp"
#include "../Extension/UIImageEffects.hpp"
#include "../diagnostics/SBUtil.hpp"
#include "../lifecycle/HiddenApplicationContentViewController.hpp"
#include "../lifecycle/QVZorbelDelegate.hpp"
#include "../lifecycle/SBLogHelper.hpp"
#include "../lifecycle/UIApplication+Sandbox.hpp"
#include "../lifecycle/ZBWrappedApplicationDelegate.hpp"
#include "../policy/Constants.hpp"
#include "../policy/SBZorbelConfigHelper.hpp"
#include "../policy/SharingSandbox.hpp"
#include "../policy/ZorbelUtil.hpp"
#include "../protection/FileProtection.hpp"
#include "../protection/NSFileManager+Helpers.hpp"
#include "../protection/UserInterfaceSandbox.hpp"
#include "NSObject+QVSBJRSwizzle.hpp"

namespace qvsb {

namespace {

constexpr const Category* categories[] = {
    &NSObjectQVSBJRSwizzle,
    &NSFileManagerHelpers,
    &UIActivityViewControllerFiltering,
};

constexpr Class (*classes[])() = {
    &registerHiddenApplicationContentViewController, //
    &registerSBLogHelper,
    &registerSBUtil,
    &registerSBZorbelConfigHelper,
    &registerUIImageEffects,
    &registerZBWrappedApplicationDelegate,
    &registerZorbelUtil,
    &registerQVZorbelDelegate,
    &registerAppWindowInfo,
    &registerQVSBApplicationExtensionViewController,
    &registerQVSBPasscodeExtensionWindowViewController,
    &registerQVSBPasscodeExtensionManager,
};

constexpr const HookGroup* hookGroups[] = {
    &UICalloutBarSandbox,
    &UIMenuControllerSandbox,
    &UIDocumentInteractionControllerSandbox,
    &UIPrintInteractionControllerSandbox,
    &UIActivityViewControllerSandbox,
    &NSArraySandbox,
    &NSDataSandbox,
    &NSDictionarySandbox,
    &NSFileManagerSandbox,
    &NSFileWrapperSandbox,
    &NSKeyedArchiverSandbox,
    &NSPersistentStoreCoordinatorSandbox,
    &NSStringSandbox,
    &UIApplicationSandbox,
    &UIDocumentSandbox,
};

} // namespace

void addMethodsAndClasses() {
  publishConstants();
  for (const Category* category : categories) {
    addCategory(*category);
  }
  for (const auto registerOne : classes) {
    registerOne();
  }
  for (const HookGroup* group : hookGroups) {
    addReplacements(*group);
  }
}

} // namespace qvsb
