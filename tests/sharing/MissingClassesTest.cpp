// Installers on a platform that lacks the classes they hook. Here the runtime does not find what a test hides.
#include "policy/SharingSandbox.hpp"
#include "protection/UserInterfaceSandbox.hpp"
#include "startup/methods.hpp"

#include "platform/objc/ownership.hpp"
#include "support/Log.hpp"

#include <cstring>
#include <dlfcn.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {
std::string hidden; // NOLINT(cert-err58-cpp): before any test
}

extern "C" objc_class* objc_lookUpClass(const char* name) {
  static auto* const real = reinterpret_cast<objc_class* (*)(const char*)>(dlsym(RTLD_NEXT, "objc_lookUpClass"));
  return hidden == name ? nullptr : real(name);
}

namespace {

using namespace qvsb;
using Lines = std::vector<std::string>;

Lines installedWithout(const char* cls, void (*install)()) {
  const AutoreleasePool pool;
  hidden = cls;
  support::clearLog();
  install();
  hidden.clear();
  return support::log();
}

} // namespace

TEST(MissingClass, OfTheShareSheetIsSaidInTheInstallersOwnLine) {
  EXPECT_EQ(installedWithout("UIActivityViewController", &UIActivityViewControllerSandboxInit),
            (Lines{"3 Sandboxing UIActivityViewController", "0 UIActivityViewController Class not found."}));
}

TEST(MissingClass, OfTheCalloutBarEndsInTheCatchLineWithoutADescription) {
  EXPECT_EQ(installedWithout("UICalloutBar", &UICalloutBarSandboxInit),
            (Lines{"3 Sandboxing UICalloutBar", "0 UICalloutBarSandboxInit: Caught HookException: (null)"}));
}

TEST(MissingClass, OfTheOpenInListTheMenuAndPrintingEndsInTheCatchLineToo) {
  EXPECT_EQ(installedWithout("UIDocumentInteractionController", &UIDocumentInteractionControllerSandboxInit),
            (Lines{"3 Sandboxing UIDocumentInteractionController",
                   "0 UIDocumentInteractionControllerSandboxInit: Caught HookException: (null)"}));
  EXPECT_EQ(installedWithout("UIMenuController", &UIMenuControllerSandboxInit),
            (Lines{"3 Sandboxing UIMenuController", "0 UIMenuControllerSandboxInit: Caught HookException: (null)"}));
  EXPECT_EQ(installedWithout("UIPrintInteractionController", &UIPrintInteractionControllerSandboxInit),
            (Lines{"3 Sandboxing UIPrintInteractionController",
                   "0 UIPrintInteractionControllerSandboxInit: Caught HookException: (null)"}));
}
