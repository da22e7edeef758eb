#pragma once

#include <filesystem>

namespace qvdevice {

/// Where this program stands; everything of ours is found from there, so that the tree may be moved.
std::filesystem::path programFolder();

/// The folder of the shared libraries: the device, the SDK, and the library that is put into apps.
std::filesystem::path libraryFolder();

} // namespace qvdevice
