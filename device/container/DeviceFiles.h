#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qvdevice {

/// Writes a new file into a folder of the device's, given relative to the device's folder and made when it is not
/// there. A name that is taken gets a number, as on the phone. Answers the file's path within the device; empty when
/// the device has no folder, the folder or the name leads out of it, or the file cannot be written. Nothing of the
/// app's process but this function is involved: what another app or a printer receives is not a file that the app
/// writes.
std::string putDeviceFile(const std::string& folder, const std::string& name, std::string_view bytes);

/// The names in a folder of the device's, sorted, hidden ones left out; none when it is not there.
std::vector<std::string> deviceFolderEntries(const std::string& folder);

} // namespace qvdevice
