#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "Container.h"

namespace qvdevice {

/// Makes ready the folder in which a device keeps what its apps have in common; answers where it really lies. Only an
/// empty folder or one that has been a device's is used, since apps may change what is in it.
std::filesystem::path prepareDevice(const std::filesystem::path& folder);

/// The device that a program is run on: the folder that somebody names, or one for the time of the run when there is
/// only something to install, or none.
class DeviceToRunOn {
public:
  /// Throws Failure for a folder that cannot be a device and for an app that cannot be installed.
  DeviceToRunOn(const std::optional<std::filesystem::path>& given, const std::vector<std::filesystem::path>& installed);

  /// Empty when there is none.
  const std::filesystem::path& folder() const { return folder_; }

private:
  std::optional<TemporaryContainer> temporary_;
  std::filesystem::path folder_;
};

} // namespace qvdevice
