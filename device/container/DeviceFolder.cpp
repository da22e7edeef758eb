#include "container/DeviceFolder.h"

#include <cstdlib>

#include "container/Container.h"
#include "container/FolderCheck.h"
#include "container/Refusal.h"

namespace qvdevice {

namespace {

bool liesIn(const std::string& path, const std::string& folder) {
  return (path + '/').compare(0, folder.size() + 1, folder + '/') == 0;
}

std::string checkedDeviceFolder() {
  const char* given = std::getenv("QVDEVICE_DEVICE");
  if (given == nullptr || *given == '\0') return {};
  const std::string advice = "; name an empty or a new folder with \"qvdevice run --device DIR APP\"";
  std::string device = checkedFolder("the device's folder", given, advice);
  // An app may remove all of its container, and nothing of another app's.
  if (liesIn(device, containerPath()))
    refuse("the device's folder \"" + device + "\" lies in the container \"" + containerPath() + "\"" + advice);
  if (liesIn(containerPath(), device))
    refuse("the device's folder \"" + device + "\" holds the container \"" + containerPath() + "\"" + advice);
  return device;
}

} // namespace

const std::string& deviceFolder() {
  static const std::string& folder = *new std::string(checkedDeviceFolder());
  return folder;
}

} // namespace qvdevice
