#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Bundle.h"
#include "Events.h"

namespace qvdevice {

/// What a device goes through: apps are put on it and launched one after the other, and things happen to them.
struct Scenario {
  /// What follows belongs together.
  struct Chapter {
    std::string title;
  };
  /// An app is put on the device, for the sake of its extensions and of what it opens.
  struct Install {
    Bundle bundle;
  };
  /// An app is launched, and lives through `events`; the last of them is its end.
  struct Launch {
    Bundle bundle;
    std::optional<std::filesystem::path> policies;
    std::optional<std::string> url;
    std::optional<std::string> source;
    std::vector<Event> events;
  };
  using Step = std::variant<Chapter, Install, Launch>;

  /// What it shows; empty when it does not say.
  std::string title;
  /// Of the device, where the scenario says so.
  std::optional<std::string> systemVersion;
  std::optional<std::string> idiom;
  std::vector<Step> steps;
};

/// Reads a scenario: an events file that also says which device it is, and what is installed and launched there. Apps
/// are looked for beside the file or, by a name alone, in `apps`. Throws Failure with file, line and column of the
/// first thing that is wrong; that includes an app or a policies file that is not there, and what the SDK would not
/// take.
Scenario readScenario(const std::filesystem::path& file, const std::filesystem::path& apps);

} // namespace qvdevice
