#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "AppLaunch.h"

namespace qvdevice {

struct RunOptions : LaunchOptions {
  std::filesystem::path app;
  std::optional<std::filesystem::path> container;
  /// Where the device keeps what its apps have in common; without it the app has a device to itself.
  std::optional<std::filesystem::path> device;
  /// Apps to install on the device, for the sake of their extensions and documents.
  std::vector<std::filesystem::path> installed;
  std::optional<std::filesystem::path> events;
  /// Where the pictures of the screen are written.
  std::optional<std::filesystem::path> screens;
  bool keep = false;
  /// Where an HTML report is written.
  std::optional<std::filesystem::path> report;
  bool json = false;
  bool verbose = false;
};

/// Runs an app on the device and reports what happens. 0 when it ended as a real one would; throws Failure when it
/// cannot even be tried.
int run(const RunOptions& options);

} // namespace qvdevice
