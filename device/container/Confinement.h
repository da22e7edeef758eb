#pragma once

#include <string>

namespace qvdevice {

/// Takes from this process, for ever, the right to write anything outside `container` and `device`, which may be empty
/// (and /dev/null and /dev/tty, and the terminal or named pipe that is standard error at the time). Descriptors that
/// are already open keep working. Refuses to go on when the kernel cannot do that.
///
/// Under an emulator that does not know Landlock, the process was confined before it became an emulated one
/// (tools/emulation): there this makes sure of it, and refuses to go on otherwise.
void confineWritesTo(const std::string& container, const std::string& device);

/// Set for an emulated process by the one that confined it: what it may write.
inline constexpr char kConfinedVariable[] = "QVDEVICE_CONFINED";

/// The value of that variable for these folders.
inline std::string confinedTo(const std::string& container, const std::string& device) {
  return container + '\n' + device;
}

} // namespace qvdevice
