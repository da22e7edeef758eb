#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace qvdevice {

struct RunOptions {
  std::filesystem::path app;
  std::optional<std::filesystem::path> policies;
  std::optional<std::filesystem::path> container;
  std::optional<std::filesystem::path> events;
  std::string systemVersion = "17.0";
  std::string idiom = "phone";
  std::string defaultProtection = "NSFileProtectionNone";
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
