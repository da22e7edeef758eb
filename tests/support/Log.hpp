// The SDK's log as text, for C++ and Objective-C++ tests alike.
#pragma once

#include <string>
#include <vector>

namespace support {

/// The lines that went through the SDK's logger since the last clearLog(), each "<level> <text>".
std::vector<std::string> log();
void clearLog();
/// Those of one level only.
std::vector<std::string> log(int level);

} // namespace support
