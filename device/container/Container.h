#pragma once

#include <string>

namespace qvdevice {

/// The container's absolute path, free of symbolic links. The first call checks it and refuses to go on without one.
///
/// Foundation asks for the home folder whenever it likes, also while libraries are still being loaded; a check that
/// waited for the device's own start would let the first of those questions through.
const std::string& containerPath();

/// Makes the folders that every app finds in its container.
void makeStandardFolders();

/// Points the environment's home and temporary folders into the container, as the phone does.
void pointEnvironmentAtContainer();

} // namespace qvdevice
