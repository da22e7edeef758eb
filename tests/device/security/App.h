// An app of a chosen identifier, with a container of its own, on a device that several may share.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Child.h"

class App {
public:
  explicit App(const std::string& identifier) : folder_(freshFolder()), container_(freshFolder()) {
    std::filesystem::copy_file(KEYCHAIN_USER, folder_ + "/User");
    std::ofstream(folder_ + "/Info.plist") << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                              "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>"
                                           << identifier << "</string></dict></plist>\n";
  }

  /// What it writes to standard output. `device` may be empty, `settings` too.
  std::string run(std::vector<std::string> words, const std::string& device = {},
                  const std::string& settings = {}) const {
    words.insert(words.begin(), folder_ + "/User");
    Environment environment{{"QVDEVICE_CONTAINER", container_}, {"LD_LIBRARY_PATH", DEVICE_LIBRARIES}};
    if (!device.empty()) environment.emplace_back("QVDEVICE_DEVICE", device);
    if (!settings.empty()) environment.emplace_back("QVDEVICE_SETTINGS", settings);
    const ChildResult result = runChild(words, environment);
    EXPECT_EQ(result.status, 0) << result.errors;
    errors = result.errors;
    return result.output;
  }

  const std::string& container() const { return container_; }

  /// What the last run wrote to standard error.
  mutable std::string errors;

private:
  std::string folder_;
  std::string container_;
};
