#pragma once

#include <string>

namespace qvdevice {

/// The identifier in the Info.plist beside this process's executable; empty without one. Foundation is not asked: it
/// reads its own settings first, and those lie where this decides.
std::string bundleIdentifier();

} // namespace qvdevice
