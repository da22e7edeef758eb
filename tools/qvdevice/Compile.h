#pragma once

#include <string>
#include <vector>

namespace qvdevice {

/// `qvdevice cc`: compiles an app's sources against the device into a bundle that `qvdevice run` takes. The arguments
/// are the compiler's own but for -o, --plist, --identifier and --help. The compiler's exit status, or 0.
int compile(const std::vector<std::string>& arguments);

} // namespace qvdevice
