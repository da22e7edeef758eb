#pragma once

#include <string>

namespace qvdevice {

/// Where the folder `given` really lies, once it is clear that it can be written and is no more than a folder.
/// Otherwise the process ends with a sentence that begins with `what`, names the folder and ends with `advice`.
std::string checkedFolder(const std::string& what, const char* given, const std::string& advice);

} // namespace qvdevice
