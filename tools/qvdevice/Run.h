#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace qvdevice {

struct RunOptions {
  std::filesystem::path app;
  std::optional<std::filesystem::path> policies;
  std::optional<std::filesystem::path> container;
  /// Where the device keeps what its apps have in common; without it the app has a device to itself.
  std::optional<std::filesystem::path> device;
  /// Apps to install on the device, for the sake of their extensions and documents.
  std::vector<std::filesystem::path> installed;
  std::optional<std::filesystem::path> events;
  std::string systemVersion = "17.0";
  std::string idiom = "phone";
  std::string defaultProtection = "NSFileProtectionNone";
  /// What the app is launched with: a URL, and the app that asked for it.
  std::optional<std::string> launchUrl;
  std::optional<std::string> launchSource;
  /// The application does not know the platform's own way to end itself.
  bool withoutTerminateWithSuccess = false;
  bool withoutPrinting = false;
  bool keep = false;
  bool noLibrary = false;
  bool json = false;
  bool verbose = false;
  /// How long the app may take to start, to answer, and to end.
  int timeoutSeconds = 30;
};

/// Runs an app on the device and reports what happens. 0 when it ended as a real one would; throws Failure when it
/// cannot even be tried.
int run(const RunOptions& options);

} // namespace qvdevice
