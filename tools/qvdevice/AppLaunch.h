#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Bundle.h"
#include "Child.h"
#include "Events.h"
#include "Report.h"
#include "ScreenFolder.h"

namespace qvdevice {

/// The device that an app is launched on, and what it is launched with.
struct LaunchOptions {
  std::optional<std::filesystem::path> policies;
  std::string systemVersion = "17.0";
  std::string idiom = "phone";
  std::string defaultProtection = "NSFileProtectionNone";
  /// A URL that it opens, and the app that asked for it.
  std::optional<std::string> launchUrl;
  std::optional<std::string> launchSource;
  /// The application does not know the platform's own way to end itself.
  bool withoutTerminateWithSuccess = false;
  bool withoutPrinting = false;
  bool noLibrary = false;
  /// How long the app may take to start, to answer, and to end.
  int timeoutSeconds = 30;
};

/// Makes a folder that somebody names a container, unless it is one, and answers where it really lies. Throws Failure
/// for one that cannot be: the app may do there as it pleases, down to removing everything.
std::filesystem::path prepareContainer(const std::filesystem::path& folder);

/// Puts the app into the container and says how its process is started there. An empty `device` is none. Throws
/// Failure.
Launch makeLaunch(const LaunchOptions& options, const Bundle& bundle, const std::filesystem::path& container,
                  const std::filesystem::path& device);

/// Launches an app and plays the events to it, from the report's begin to its end. `kept` says that the container
/// outlasts the program; pictures of the screen are written to `screens`, too. Throws Failure when the app cannot even
/// be started.
Outcome playApp(const LaunchOptions& options, const Bundle& bundle, const std::filesystem::path& container, bool kept,
                const std::filesystem::path& device, const std::vector<Event>& events, Report& report,
                ScreenFolder* screens = nullptr);

} // namespace qvdevice
