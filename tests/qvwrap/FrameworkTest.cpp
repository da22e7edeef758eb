// What --framework may name.
#include "Framework.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Failure.h"
#include "Inputs.h"

using namespace inputs;
using qvwrap::Framework;
namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t kDevice = 2;
constexpr std::uint32_t kSimulator = 7;

std::string refusal(const fs::path& path, std::uint32_t platform = kDevice) {
  try {
    qvwrap::readFramework(path, platform);
    return "";
  } catch (const qvwrap::Failure& failure) {
    return failure.what();
  }
}

fs::path copyOfTheDevices(const WorkFolder& work) {
  const fs::path copy = work.path() / "QVSandbox.framework";
  fs::copy(folder() / "QVSandbox.xcframework/ios-arm64/QVSandbox.framework", copy, fs::copy_options::recursive);
  return copy;
}

} // namespace

TEST(FrameworkTest, AnXCFrameworkGivesTheOneForThePlatform) {
  const Framework device = qvwrap::readFramework(xcframework(), kDevice);
  EXPECT_EQ(device.version, "4.2.0.18");
  ASSERT_EQ(device.slices.size(), 1U);
  EXPECT_EQ(device.slices[0].platform, 2U);
  EXPECT_EQ(device.library().current.text(), "4.2");
  EXPECT_THAT(device.companions(), testing::ElementsAre("Zorbel.framework/Zorbel"));
  EXPECT_EQ(qvwrap::readFramework(xcframework(), kSimulator).slices.size(), 2U);
}

TEST(FrameworkTest, FilesComeWithTheirPermissionsAndFoldersBeforeWhatTheyHold) {
  const WorkFolder work;
  const fs::path copy = copyOfTheDevices(work);
  write(copy / "en.lproj/Main.strings", "x");
  const Framework framework = qvwrap::readFramework(copy.string() + "/", kDevice);
  std::vector<std::string> paths;
  for (const auto& file : framework.files) {
    paths.push_back(file.path);
    EXPECT_EQ(file.executable, file.path == "QVSandbox") << file.path;
  }
  EXPECT_THAT(paths, testing::ElementsAre("Info.plist", "QVSandbox", "en.lproj/Main.strings"));
  EXPECT_THAT(framework.folders, testing::ElementsAre("en.lproj"));
}

TEST(FrameworkTest, AnXCFrameworkWithoutThePlatformIsRefused) {
  const WorkFolder work;
  const fs::path copy = work.path() / "QVSandbox.xcframework";
  write(copy / "Info.plist", "<plist version=\"1.0\"><dict/></plist>");
  EXPECT_EQ(refusal(copy, kSimulator),
            copy.string() + " holds no framework for the iOS simulator, which the app is made for");
}

TEST(FrameworkTest, AnXCFrameworkThatLeadsOutOfItselfIsRefused) {
  const WorkFolder work;
  copyOfTheDevices(work);
  const fs::path copy = work.path() / "QVSandbox.xcframework";
  for (const char* identifier : {"..", "a/../..", "/etc"}) {
    write(copy / "Info.plist", std::string("<plist version=\"1.0\"><dict><key>AvailableLibraries</key><array><dict>"
                                           "<key>LibraryIdentifier</key><string>") +
                                   identifier +
                                   "</string><key>LibraryPath</key><string>QVSandbox.framework</string>"
                                   "<key>SupportedPlatform</key><string>ios</string></dict></array></dict></plist>");
    EXPECT_THAT(refusal(copy), testing::HasSubstr("names a framework outside of QVSandbox.xcframework")) << identifier;
  }
}

TEST(FrameworkTest, AFrameworkOfAnotherNameIsRefused) {
  const WorkFolder work;
  const fs::path other = work.path() / "Other.framework";
  fs::rename(copyOfTheDevices(work), other);
  EXPECT_EQ(refusal(other), other.string() + " is not QVSandbox.framework");
}

TEST(FrameworkTest, AFrameworkWithoutItsLibraryOrItsInfoPlistIsRefused) {
  for (const char* name : {"QVSandbox", "Info.plist"}) {
    const WorkFolder work;
    const fs::path copy = copyOfTheDevices(work);
    fs::remove(copy / name);
    EXPECT_EQ(refusal(copy), copy.string() + " is no framework for iOS: it holds no " + name);
  }
}

TEST(FrameworkTest, AFrameworkWithALinkIsRefused) {
  const WorkFolder work;
  const fs::path copy = copyOfTheDevices(work);
  fs::create_symlink("/etc/passwd", copy / "Link");
  EXPECT_EQ(refusal(copy),
            (copy / "Link").string() + " is neither a file nor a folder; frameworks for iOS hold no links");
}

TEST(FrameworkTest, AnotherLibraryUnderTheNameIsRefused) {
  const WorkFolder work;
  const fs::path copy = copyOfTheDevices(work);
  write(copy / "QVSandbox", executable("not_a_host"));
  EXPECT_EQ(refusal(copy), (copy / "QVSandbox").string() +
                               " is not the library: its install name is not @rpath/QVSandbox.framework/QVSandbox "
                               "(arm64)");
  write(copy / "QVSandbox", executable("host"));
  EXPECT_EQ(refusal(copy), (copy / "QVSandbox").string() + " is a Mach-O file, but no dynamic library");
}
