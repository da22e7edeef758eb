// What the device does before an app's main, and when it refuses to start.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "Child.h"

namespace {

constexpr int kRefused = 78;

void expectRefused(const Environment &environment, const std::string &sentence) {
  const ChildResult result = runStarter({}, environment);
  EXPECT_EQ(result.status, kRefused);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, sentence);
}

const std::string kHowToRun =
    "; start an app with \"qvdevice run APP\", or a program with \"qvdevice exec -- PROGRAM\"\n";

} // namespace

TEST(Start, InAContainerReachesMain) {
  const ChildResult result = runStarter({}, {{"QVDEVICE_CONTAINER", freshFolder()}});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "started\n");
  EXPECT_EQ(result.errors, "");
}

TEST(Start, WithoutAContainerIsRefusedAndTellsHowToRun) {
  expectRefused({}, "QVDevice: there is no container (QVDEVICE_CONTAINER is not set)" + kHowToRun);
}

TEST(Start, WithAnEmptyContainerNameIsRefused) {
  expectRefused({{"QVDEVICE_CONTAINER", ""}},
                "QVDevice: there is no container (QVDEVICE_CONTAINER is not set)" + kHowToRun);
}

TEST(Start, WithARelativeContainerIsRefused) {
  expectRefused({{"QVDEVICE_CONTAINER", "container"}},
                "QVDevice: the container \"container\" is not an absolute path" + kHowToRun);
}

TEST(Start, WithAContainerThatDoesNotExistIsRefusedAndMakesNone) {
  const std::string missing = freshFolder() + "/missing";
  expectRefused({{"QVDEVICE_CONTAINER", missing}},
                "QVDevice: the container \"" + missing + "\" cannot be used: No such file or directory" + kHowToRun);
  EXPECT_NE(::access(missing.c_str(), F_OK), 0);
}

TEST(Start, WithAFileForAContainerIsRefused) {
  const std::string file = freshFolder() + "/file";
  std::ofstream(file) << "text";
  expectRefused({{"QVDEVICE_CONTAINER", file}}, "QVDevice: the container \"" + file + "\" is not a folder" + kHowToRun);
}

TEST(Start, WithTheWholeFileSystemForAContainerIsRefused) {
  expectRefused({{"QVDEVICE_CONTAINER", "/"}}, "QVDevice: the container \"/\" is the whole file system" + kHowToRun);
  expectRefused({{"QVDEVICE_CONTAINER", "/usr/.."}},
                "QVDevice: the container \"/usr/..\" is the whole file system" + kHowToRun);
}

TEST(Start, WithTheRealUsersHomeForAContainerIsRefusedHoweverItIsSpelled) {
  // Of whom the system knows, whatever the environment says. A test may not write there: nothing could be harmed.
  const std::string home = ::getpwuid(::geteuid())->pw_dir;
  ASSERT_EQ(::access(home.c_str(), R_OK | W_OK | X_OK), 0) << "the user has no home to be protected";
  const std::string link = freshFolder() + "/link";
  ASSERT_EQ(::symlink(home.c_str(), link.c_str()), 0);
  for (const std::string &container : {home, home + "/", link})
    expectRefused({{"QVDEVICE_CONTAINER", container}},
                  "QVDevice: the container \"" + container + "\" is a home of real files" + kHowToRun);
}

TEST(Start, WithAContainerWhosePathIsNotUtf8IsRefused) {
  const std::string container = freshFolder() + "/\xff";
  ::mkdir(container.c_str(), 0755);
  expectRefused({{"QVDEVICE_CONTAINER", container}},
                "QVDevice: the container \"" + container + "\" has a path that is no text" + kHowToRun);
}

TEST(Start, WithAFileInPlaceOfAStandardFolderIsRefused) {
  const std::string container = freshFolder();
  std::ofstream(container + "/Documents") << "text";
  expectRefused({{"QVDEVICE_CONTAINER", container}},
                "QVDevice: the container's folder \"" + container + "/Documents\" cannot be made: File exists\n");
}

TEST(Start, MakesTheStandardFolders) {
  const std::string container = freshFolder();
  runStarter({}, {{"QVDEVICE_CONTAINER", container}});
  for (const char *folder : {"/Documents", "/Library", "/Library/Caches", "/Library/Preferences", "/tmp"}) {
    struct stat status{};
    EXPECT_EQ(::stat((container + folder).c_str(), &status), 0) << folder;
    EXPECT_TRUE(S_ISDIR(status.st_mode)) << folder;
  }
}

TEST(Start, KeepsWhatIsInTheContainer) {
  const std::string container = freshFolder();
  ::mkdir((container + "/Documents").c_str(), 0700);
  std::ofstream(container + "/Documents/note") << "text";
  EXPECT_EQ(runStarter({}, {{"QVDEVICE_CONTAINER", container}}).status, 0);
  std::string text;
  std::ifstream(container + "/Documents/note") >> text;
  EXPECT_EQ(text, "text");
}

TEST(Start, WithAContainerBehindALinkConfinesToWhereTheLinkLeads) {
  const std::string folder = freshFolder();
  ::mkdir((folder + "/container").c_str(), 0755);
  ASSERT_EQ(::symlink("container", (folder + "/link").c_str()), 0);
  const Environment environment{{"QVDEVICE_CONTAINER", folder + "/link"}};
  EXPECT_EQ(runStarter({"write", folder + "/container/file"}, environment).output, "written\n");
  EXPECT_EQ(runStarter({"write", folder + "/file"}, environment).output, "Permission denied\n");
}

TEST(Start, WithAFolderForTheDeviceMayWriteThereToo) {
  const std::string folder = freshFolder();
  for (const char *each : {"/container", "/device", "/other"})
    ::mkdir((folder + each).c_str(), 0755);
  const Environment environment{{"QVDEVICE_CONTAINER", folder + "/container"}, {"QVDEVICE_DEVICE", folder + "/device"}};
  EXPECT_EQ(runStarter({"write", folder + "/container/file"}, environment).output, "written\n");
  EXPECT_EQ(runStarter({"write", folder + "/device/file"}, environment).output, "written\n");
  EXPECT_EQ(runStarter({"write", folder + "/other/file"}, environment).output, "Permission denied\n");
  EXPECT_EQ(runStarter({"write", folder + "/file"}, environment).output, "Permission denied\n");
}

TEST(Start, WithAnEmptyNameForTheDevicesFolderHasADeviceToItself) {
  EXPECT_EQ(runStarter({}, {{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_DEVICE", ""}}).status, 0);
}

TEST(Start, WithAFolderForTheDeviceThatCannotBeUsedIsRefused) {
  const std::string advice = "; name an empty or a new folder with \"qvdevice run --device DIR APP\"\n";
  const std::string container = freshFolder();
  expectRefused({{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", "device"}},
                "QVDevice: the device's folder \"device\" is not an absolute path" + advice);
  expectRefused({{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", container + "-missing"}},
                "QVDevice: the device's folder \"" + container +
                    "-missing\" cannot be used: No such file or directory" + advice);
  expectRefused({{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", "/"}},
                "QVDevice: the device's folder \"/\" is the whole file system" + advice);
}

TEST(Start, WithAFolderForTheDeviceThatAnAppCouldTakeForItsOwnIsRefused) {
  const std::string advice = "; name an empty or a new folder with \"qvdevice run --device DIR APP\"\n";
  const std::string outer = freshFolder();
  const std::string inner = outer + "/inner";
  ::mkdir(inner.c_str(), 0755);
  expectRefused({{"QVDEVICE_CONTAINER", outer}, {"QVDEVICE_DEVICE", inner}},
                "QVDevice: the device's folder \"" + inner + "\" lies in the container \"" + outer + "\"" + advice);
  expectRefused({{"QVDEVICE_CONTAINER", outer}, {"QVDEVICE_DEVICE", outer}},
                "QVDevice: the device's folder \"" + outer + "\" lies in the container \"" + outer + "\"" + advice);
  expectRefused({{"QVDEVICE_CONTAINER", inner}, {"QVDEVICE_DEVICE", outer}},
                "QVDevice: the device's folder \"" + outer + "\" holds the container \"" + inner + "\"" + advice);
  // Alike in name only.
  const std::string neighbour = outer + "/inner-too";
  ::mkdir(neighbour.c_str(), 0755);
  EXPECT_EQ(runStarter({}, {{"QVDEVICE_CONTAINER", inner}, {"QVDEVICE_DEVICE", neighbour}}).status, 0);
}

TEST(Start, WithGoodSettingsReachesMain) {
  const std::string settings =
      R"({"systemVersion":"9.3.5","idiom":"pad","defaultProtection":"NSFileProtectionCompleteUnlessOpen"})";
  EXPECT_EQ(runStarter({}, {{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_SETTINGS", settings}}).status, 0);
}

struct BadSettings {
  const char *name;
  const char *text;
  const char *reason;
};

class RefusedSettings : public testing::TestWithParam<BadSettings> {};

TEST_P(RefusedSettings, AreNamedWithTheReason) {
  expectRefused({{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_SETTINGS", GetParam().text}},
                std::string("QVDevice: the device's settings (QVDEVICE_SETTINGS) are refused: ") + GetParam().reason +
                    "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Start, RefusedSettings,
    testing::Values(
        BadSettings{"Empty", "", "not JSON, at byte 1"},
        BadSettings{"CutOff", R"({"idiom":"pad")", "not JSON, at byte 15"},
        BadSettings{"AList", "[]", "a JSON object is expected, not an array"},
        BadSettings{"ANumber", "17", "a JSON object is expected, not a number"},
        BadSettings{
            "UnknownKey", R"({"version":"17.0"})",
            "unknown key \"version\"; the keys are systemVersion, idiom, defaultProtection, terminateWithSuccess, "
            "persistentDomainNames, printingAvailable"},
        BadSettings{"TerminationAsText", R"({"terminateWithSuccess":"no"})",
                    R"(terminateWithSuccess must be true or false, not "no")"},
        BadSettings{"VersionAsNumber", R"({"systemVersion":17})", "systemVersion must be a string, not 17"},
        BadSettings{"VersionWithLetters", R"({"systemVersion":"17b"})",
                    R"(systemVersion is "17b"; it must be numbers with dots, as in "17.0")"},
        BadSettings{"VersionWithEmptyNumber", R"({"systemVersion":"17..1"})",
                    R"(systemVersion is "17..1"; it must be numbers with dots, as in "17.0")"},
        BadSettings{"UnknownIdiom", R"({"idiom":"watch"})", R"(idiom is "watch"; it may be phone, pad)"},
        BadSettings{"DomainNamesAsText", R"({"persistentDomainNames":"no"})",
                    R"(persistentDomainNames must be true or false, not "no")"},
        BadSettings{
            "UnknownProtection", R"({"defaultProtection":"none"})",
            "defaultProtection is \"none\"; it may be NSFileProtectionNone, NSFileProtectionComplete, "
            "NSFileProtectionCompleteUnlessOpen, NSFileProtectionCompleteUntilFirstUserAuthentication, absent"}),
    [](const auto &information) { return information.param.name; });

struct BadLaunch {
  const char *name;
  const char *text;
  const char *reason;
};

class RefusedLaunch : public testing::TestWithParam<BadLaunch> {};

TEST_P(RefusedLaunch, IsNamedWithTheReason) {
  expectRefused({{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_LAUNCH", GetParam().text}},
                std::string("QVDevice: the app's launch (QVDEVICE_LAUNCH) is refused: ") + GetParam().reason + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Start, RefusedLaunch,
    testing::Values(BadLaunch{"Empty", "", "not JSON, at byte 1"},
                    BadLaunch{"CutOff", R"({"url":"a:b")", "not JSON, at byte 13"},
                    BadLaunch{"AList", "[]", "a JSON object is expected, not an array"},
                    BadLaunch{"UnknownKey", R"({"URL":"a:b"})",
                              R"(unknown key "URL"; the keys are url, sourceApplication, annotation)"},
                    BadLaunch{"URLAsNumber", R"({"url":7})", "url must be a string, not 7"},
                    BadLaunch{"URLAsNull", R"({"url":null})", "url must be a string, not null"},
                    BadLaunch{"EmptyURL", R"({"url":""})", R"("" is no URL)"},
                    BadLaunch{"URLWithoutScheme", R"({"url":"open"})", R"("open" is no URL)"},
                    BadLaunch{"URLWithSpace", R"({"url":"a:b c"})", R"("a:b c" is no URL)"},
                    BadLaunch{"URLWithoutPath", R"({"url":"notes://open?id=7"})",
                              R"("notes://open?id=7" cannot be read by this device: put a slash after the host)"},
                    BadLaunch{"SourceAsNumber", R"({"url":"a:b","sourceApplication":7})",
                              "sourceApplication must be a string, not 7"},
                    BadLaunch{"EmptySource", R"({"url":"a:b","sourceApplication":""})", "sourceApplication is empty"},
                    BadLaunch{"SourceAlone", R"({"sourceApplication":"com.example"})",
                              "without a url there is no sourceApplication and no annotation"},
                    BadLaunch{"AnnotationAlone", R"({"annotation":1})",
                              "without a url there is no sourceApplication and no annotation"}),
    [](const auto &information) { return information.param.name; });

TEST(Start, WithAGoodLaunchReachesMain) {
  for (const char *launch : {"{}", R"({"url":"notes://x","sourceApplication":"com.example","annotation":[1,{"a":2}]})",
                             R"({"url":"notes://x","sourceApplication":null,"annotation":null})"})
    EXPECT_EQ(runStarter({}, {{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_LAUNCH", launch}}).status, 0) << launch;
}

TEST(Start, WithATraceDescriptorThatIsNotOpenIsRefused) {
  expectRefused({{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_TRACE_FD", "77"}},
                "QVDevice: QVDEVICE_TRACE_FD is \"77\", which is not the number of an open descriptor\n");
}

TEST(Start, WithAControlDescriptorThatIsNoNumberIsRefused) {
  expectRefused({{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_CONTROL_FD", "3x"}},
                "QVDevice: QVDEVICE_CONTROL_FD is \"3x\", which is not the number of an open descriptor\n");
}
