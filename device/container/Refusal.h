#pragma once

#include <string_view>

namespace qvdevice {

/// The status of a process that the device refused to start (sysexits' EX_CONFIG).
inline constexpr int kRefusedStatus = 78;

/// Writes one sentence to standard error and ends the process at once: no handler, destructor or buffer of the app
/// runs.
[[noreturn]] void refuse(std::string_view sentence);

} // namespace qvdevice
