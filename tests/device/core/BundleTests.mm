// An app on the phone is a flat folder: executable, Info.plist and resources side by side.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Child.h"

namespace {

namespace files = std::filesystem;

constexpr char kInfo[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
  <key>CFBundleExecutable</key><string>Sample</string>
  <key>CFBundleIdentifier</key><string>com.example.sample</string>
  <key>CFBundleName</key><string>A Sample</string>
</dict>
</plist>
)";

/// The folder that holds libQVDevice.so: a copied program does not find it by itself.
std::string libraryFolder() {
  Dl_info information{};
  EXPECT_NE(::dladdr(reinterpret_cast<void *>(&QVDeviceContainer), &information), 0);
  return files::canonical(information.dli_fname).parent_path();
}

/// What the starter tells of its main bundle, when it is the executable of a flat bundle in a container.
std::string toldByBundle(const std::string &container, bool withInfo) {
  const files::path app = files::path(container) / "Sample.app";
  files::create_directory(app);
  files::copy_file(DEVICE_STARTER, app / "Sample");
  if (withInfo) std::ofstream(app / "Info.plist") << kInfo;
  std::ofstream(app / "words.txt") << "words";
  const ChildResult result =
      runChild({app / "Sample", "bundle"}, {{"QVDEVICE_CONTAINER", container}, {"LD_LIBRARY_PATH", libraryFolder()}});
  EXPECT_EQ(result.errors, "");
  return result.output;
}

} // namespace

TEST(MainBundle, IsTheFlatFolderOfTheApp) {
  const std::string container = freshFolder();
  const std::string app = container + "/Sample.app";
  EXPECT_EQ(toldByBundle(container, true),
            app + "\n" + app + "/Sample\n" + app + "\ncom.example.sample\nA Sample\n" + app + "/words.txt\nSample\n");
}

TEST(MainBundle, WithoutAnInfoFileHasNoIdentifier) {
  const std::string container = freshFolder();
  const std::string app = container + "/Sample.app";
  EXPECT_EQ(toldByBundle(container, false),
            app + "\n" + app + "/Sample\n" + app + "\nnil\nnil\n" + app + "/words.txt\nSample\n");
}
