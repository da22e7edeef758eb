// Runs the tests on a device of the release SYSTEM_RELEASE, with other apps on it: settings are read before any code of
// the program runs, so the program starts once more with them.
#include "OtherApps.h"

#include <cstdlib>
#include <unistd.h>

#include <gtest/gtest.h>

int main(int count, char** arguments) {
  if (std::getenv("QVDEVICE_DEVICE") == nullptr) {
    // Beside what the device takes for the app's container: neither may lie in the other.
    const std::string outer = std::getenv("QVDEVICE_CONTAINER");
    const std::string folder = outer + "/tmp/" + std::to_string(getpid());
    installOtherApps(folder + "/device");
    std::filesystem::create_directories(folder + "/container");
    setenv("QVDEVICE_CONTAINER", (folder + "/container").c_str(), 1);
    setenv("QVDEVICE_DEVICE", (folder + "/device").c_str(), 1);
    setenv("QVDEVICE_SETTINGS", R"({"systemVersion":")" SYSTEM_RELEASE R"("})", 1);
    execv("/proc/self/exe", arguments);
    return 127;
  }
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
