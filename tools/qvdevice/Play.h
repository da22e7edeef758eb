#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace qvdevice {

struct PlayOptions {
  std::filesystem::path scenario;
  /// What the device is, when the scenario is not to say it.
  std::optional<std::string> systemVersion;
  std::optional<std::string> idiom;
  /// Where the containers are kept, in folders named by the apps' identifiers; without it they go.
  std::optional<std::filesystem::path> containers;
  std::optional<std::filesystem::path> device;
  bool noLibrary = false;
  /// Where an HTML report is written.
  std::optional<std::filesystem::path> report;
  bool json = false;
  bool verbose = false;
  int timeoutSeconds = 30;
};

/// Plays a scenario, which is checked whole before anything starts. One device lasts all through it, and so does the
/// container of each app. The first launch that does not end well is the last one, and gives the status. Throws Failure
/// when it cannot be tried.
int play(const PlayOptions& options);

} // namespace qvdevice
