#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "AppLaunch.h"

namespace qvdevice {

struct HooksOptions : LaunchOptions {
  /// Without one it is a sample app of this build.
  std::optional<std::filesystem::path> app;
  bool json = false;
  /// The published list, over all releases.
  bool markdown = false;
};

/// Starts an app under the library and prints what the library has hooked in it. Throws Failure when the app does not
/// get as far as being active, and when the published list and the library do not fit together.
int hooks(const HooksOptions& options);

} // namespace qvdevice
