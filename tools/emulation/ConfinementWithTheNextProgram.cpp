// In place of the device's Confinement.cpp in an emulated qvdevice, which confines an extension's process before it
// becomes the extension: the emulator knows no Landlock, so qvconfine does it on the way to that program.

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "Starting.h"
#include "container/Confinement.h"
#include "container/Refusal.h"

namespace qvdevice {

void confineWritesTo(const std::string& container, const std::string& device) {
  if (::setenv("QVDEVICE_CONTAINER", container.c_str(), 1) != 0 ||
      ::setenv("QVDEVICE_DEVICE", device.c_str(), 1) != 0) {
    refuse(std::string("this process cannot be confined to its container: ") + std::strerror(errno));
  }
  qv_confine_what_this_becomes();
}

} // namespace qvdevice
