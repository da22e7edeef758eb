#pragma once

#include <filesystem>
#include <string>

namespace qvdevice {

/// Where this program stands; everything of ours is found from there, so that the tree may be moved.
std::filesystem::path programFolder();

/// The folder of the shared libraries: the device, the SDK, and the library that is put into apps.
std::filesystem::path libraryFolder();

/// The folder of the sample apps, which are built beside this program.
std::filesystem::path appsFolder();

/// A value of LD_LIBRARY_PATH for programs that lie away from the libraries they were linked with.
std::string withOurLibrariesFirst();

} // namespace qvdevice
