#pragma once

#include <string>

namespace qvdevice {

/// Takes from this process, for ever, the right to write anything outside `container` and `device`, which may be empty
/// (and /dev/null and /dev/tty, and the terminal or named pipe that is standard error at the time). Descriptors that
/// are already open keep working. Refuses to go on when the kernel cannot do that.
void confineWritesTo(const std::string& container, const std::string& device);

} // namespace qvdevice
