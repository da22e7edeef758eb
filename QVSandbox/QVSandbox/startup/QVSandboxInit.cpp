// The library's load-time entries, and the only code of it that runs unasked. The loader runs them in this order,
// before any code of the host app's own:
//
//   1. the library's methods and classes become known to the runtime
//   2. the capture of standard error begins
//   3. UIApplication's methods are exchanged
//   4. QVSandboxInit
//
// They stand in this file because that is what fixes their order on both targets.
#include "QVSandboxInit.hpp"

#include "../lifecycle/SBLogHelper.hpp"
#include "../lifecycle/UIApplication+Sandbox.hpp"
#include "../platform/Foundation/NSFileManager.hpp"
#include "../platform/Foundation/NSPathUtilities.hpp"
#include "../platform/Foundation/NSProcessInfo.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../policy/SharingSandbox.hpp"
#include "../protection/FileProtection.hpp"
#include "../protection/UserInterfaceSandbox.hpp"
#include "methods.hpp"

// The one translation unit that may have initialisers.
#pragma clang diagnostic ignored "-Wglobal-constructors"

using namespace qvsb;

namespace {

NSString version() { return "4.2.0.18"_ns; }

void removeStaleConfiguration() {
  const NSString documents =
      NSString::from(NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, YES).firstObject());
  const NSString path = documents.stringByAppendingPathComponent("QVConfig.plist"_ns);
  const NSFileManager fileManager = NSFileManager::defaultManager();
  NSError error;
  if (fileManager.fileExistsAtPath(path) && !fileManager.removeItemAtPath_error(path, &error)) {
    Zorbel::wrapperLogAtLevel_format(0, "Unable to remove file: %@ due to: %@"_ns, path, error);
  }
}

/// The order is part of what log readers rely on.
constexpr void (*installers[])() = {
    &UICalloutBarSandboxInit,
    &UIMenuControllerSandboxInit,
    &UIDocumentInteractionControllerSandboxInit,
    &UIPrintInteractionControllerSandboxInit,
    &UIActivityViewControllerSandboxInit,
    &NSArraySandboxInit,
    &NSDataSandboxInit,
    &NSDictionarySandboxInit,
    &NSFileManagerSandboxInit,
    &NSFileWrapperSandboxInit,
    &NSKeyedArchiverSandboxInit,
    &NSPersistentStoreCoordinatorSandboxInit,
    &NSStringSandboxInit,
    &UIDocumentSandboxInit,
};

[[gnu::constructor(101)]] void load() {
  const AutoreleasePool pool;
  addMethodsAndClasses();
  // The runtime runs `+load` of what a compiler has put into an image, not of a class that was registered.
  SBLogHelper::load();
  loadUIApplicationSandbox();
}

} // namespace

[[gnu::constructor(102)]] void QVSandboxInit() {
  const AutoreleasePool pool;
  Zorbel::wrapperLogAtLevel_format(2, "Sandboxing application %@ (%@)"_ns, NSProcessInfo::processInfo().processName(),
                                   version());
  removeStaleConfiguration();
  for (const auto install : installers) {
    install();
  }
  Zorbel::initPrivateWithDelegate_version_swizzledMethods(nullptr, version(), nullptr);
}
