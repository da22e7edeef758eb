#pragma once

#include <string>

namespace qvdevice {

/// Where the device keeps what its apps have in common, as an absolute path free of symbolic links; empty when the app
/// has a device to itself (QVDEVICE_DEVICE is not set). The first call checks the folder and refuses to go on with one
/// that cannot be used, or that an app could take for its own: one in its container, or around it.
const std::string& deviceFolder();

} // namespace qvdevice
