#pragma once

#include <filesystem>

namespace qvdevice {

/// Makes ready the folder in which a device keeps what its apps have in common; answers where it really lies. Only an
/// empty folder or one that has been a device's is used, since apps may change what is in it.
std::filesystem::path prepareDevice(const std::filesystem::path& folder);

} // namespace qvdevice
