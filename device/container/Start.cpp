// The first code of the device that runs in an app's process, before any of its classes is known to the runtime.

#include <dlfcn.h>

#include <cstdlib>

#include "container/Confinement.h"
#include "container/Container.h"
#include "container/DeviceFolder.h"
#include "container/Launch.h"
#include "container/Refusal.h"
#include "container/Settings.h"

namespace qvdevice {

namespace {

/// Foundation's own NSHomeDirectory answers the real user's home, and apps delete what lies under it: a process in
/// which it would be found before the device's must not run at all.
void checkThatTheDeviceAnswersForFoundation() {
  Dl_info ours{};
  Dl_info found{};
  const void* first = ::dlsym(RTLD_DEFAULT, "NSHomeDirectory");
  if (::dladdr(reinterpret_cast<const void*>(&containerPath), &ours) == 0 || first == nullptr ||
      ::dladdr(first, &found) == 0 || ours.dli_fbase != found.dli_fbase) {
    refuse("libgnustep-base was loaded before libQVDevice; link the program with libQVDevice first");
  }
}

} // namespace

__attribute__((constructor(101))) static void QVDeviceStart() {
  const std::string& container = containerPath();
  settings();
  launch();
  checkThatTheDeviceAnswersForFoundation();
  confineWritesTo(container, deviceFolder());
  makeStandardFolders();
  pointEnvironmentAtContainer();
  // What was put into this process is not meant for the programs that it starts.
  ::unsetenv("LD_PRELOAD");
}

} // namespace qvdevice
