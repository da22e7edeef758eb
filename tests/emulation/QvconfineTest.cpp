// qvconfine takes the right to write from itself and becomes the command that it is given.

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Folders.h"
#include "support/Child.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr int kRefused = 78;
constexpr int kCannotRun = 126;

class Qvconfine : public Folders {
protected:
  /// A shell's script, started through qvconfine.
  ChildResult run(const std::string& script, Environment environment) {
    environment.emplace_back("OUTSIDE", outside.string());
    return runChild({QVCONFINE, "/bin/sh", "-c", script}, environment);
  }
};

} // namespace

TEST_F(Qvconfine, TheCommandCanWriteInTheContainer) {
  const ChildResult result =
      run("echo text > $QVDEVICE_CONTAINER/file && echo written", {{"QVDEVICE_CONTAINER", container}});
  EXPECT_EQ(result.output, "written\n");
  EXPECT_TRUE(fs::exists(container + "/file"));
}

TEST_F(Qvconfine, TheCommandCannotWriteOutsideTheContainer) {
  const ChildResult result = run("echo text > $OUTSIDE/file; rmdir $OUTSIDE/device; mkdir $OUTSIDE/folder",
                                 {{"QVDEVICE_CONTAINER", container}});
  EXPECT_THAT(result.errors, HasSubstr("Permission denied"));
  EXPECT_FALSE(isOutside("file"));
  EXPECT_TRUE(isOutside("device"));
  EXPECT_FALSE(isOutside("folder"));
}

TEST_F(Qvconfine, WhatTheCommandStartsCannotEither) {
  run("/bin/sh -c 'echo text > $OUTSIDE/file'", {{"QVDEVICE_CONTAINER", container}});
  EXPECT_FALSE(isOutside("file"));
}

TEST_F(Qvconfine, TheDevicesFolderCanBeWrittenWhereOneIsNamed) {
  run("echo text > $OUTSIDE/device/file", {{"QVDEVICE_CONTAINER", container}});
  EXPECT_FALSE(isOutside("device/file"));
  run("echo text > $OUTSIDE/device/file", {{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", device}});
  EXPECT_TRUE(isOutside("device/file"));
}

TEST_F(Qvconfine, TheCommandIsToldWhatItMayWrite) {
  const std::string script = "printf '%s' \"$QVDEVICE_CONFINED\"";
  EXPECT_EQ(run(script, {{"QVDEVICE_CONTAINER", container}}).output, container + "\n");
  EXPECT_EQ(run(script, {{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", device}}).output,
            container + "\n" + device);
}

TEST_F(Qvconfine, WithoutAContainerTheCommandRunsAsItIsAndIsToldNothing) {
  const ChildResult result =
      run("echo text > $OUTSIDE/file; printf '<%s>' \"$QVDEVICE_CONFINED\"", {{"QVDEVICE_CONFINED", container + "\n"}});
  EXPECT_EQ(result.output, "<>");
  EXPECT_TRUE(isOutside("file"));
}

TEST_F(Qvconfine, WithAContainerThatIsNoneNothingRuns) {
  for (const std::string& none : {std::string(), std::string("relative"), container + "/missing", std::string("/")}) {
    const ChildResult result = run("echo ran; echo text > $OUTSIDE/file", {{"QVDEVICE_CONTAINER", none}});
    EXPECT_EQ(result.status, kRefused) << none;
    EXPECT_EQ(result.output, "") << none;
    EXPECT_THAT(result.errors, HasSubstr("QVDevice: ")) << none;
    EXPECT_FALSE(isOutside("file")) << none;
  }
}

TEST_F(Qvconfine, WithADeviceThatHoldsTheContainerNothingRuns) {
  const ChildResult result =
      run("echo ran", {{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_DEVICE", outside.string()}});
  EXPECT_EQ(result.status, kRefused);
  EXPECT_EQ(result.output, "");
}

TEST_F(Qvconfine, TheLoadersVariablesThatWereKeptFromItAreGivenToTheCommand) {
  const ChildResult result = runChild({QVCONFINE, "/usr/bin/env"}, {{"QV_KEPT_LD_BIND_NOW", "a=b"}, {"OTHER", "c"}});
  EXPECT_THAT(result.output, HasSubstr("OTHER=c\n"));
  EXPECT_THAT(result.output, HasSubstr("LD_BIND_NOW=a=b\n"));
  EXPECT_THAT(result.output, Not(HasSubstr("QV_KEPT_")));
}

TEST_F(Qvconfine, ArgumentsAndStatusAreTheCommands) {
  const ChildResult result = runChild({QVCONFINE, "/bin/sh", "-c", "echo \"$0|$1\"; exit 7", "a b", ""}, {});
  EXPECT_EQ(result.output, "a b|\n");
  EXPECT_EQ(result.status, 7);
}

TEST_F(Qvconfine, ACommandThatCannotBeStartedIsNamed) {
  const ChildResult result = runChild({QVCONFINE, container + "/missing"}, {});
  EXPECT_EQ(result.status, kCannotRun);
  EXPECT_EQ(result.errors, "qvconfine: cannot start " + container + "/missing: No such file or directory\n");
}

TEST_F(Qvconfine, WithoutACommandItTellsItsUse) {
  const ChildResult result = runChild({QVCONFINE}, {});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "usage: qvconfine COMMAND [ARGUMENT...]\n");
}
