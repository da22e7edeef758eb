#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace qvdevice {

/// Installs an app on the device, in place of an older one of the same identifier, whose documents stay. Throws Failure
/// when it is no app, or has no identifier.
void installOnDevice(const std::filesystem::path& app, const std::filesystem::path& device);

/// The program of the extension with that bundle identifier, in the plug-ins of an app on the device.
std::optional<std::filesystem::path> installedExtension(const std::filesystem::path& device,
                                                        const std::string& identifier);

} // namespace qvdevice
