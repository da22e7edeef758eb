// Scenarios that are refused before anything starts.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class Scenario : public testing::Test {
protected:
  Ended play(const std::string& text) const { return qvdevice({"play", folder.write("scenario", text)}); }

  /// What is said to a scenario of this text, without the path of the folder that it lies in.
  std::string refusal(const std::string& text) const {
    const Ended ended = play(text);
    EXPECT_EQ(ended.status, 65) << ended.out;
    EXPECT_EQ(ended.out, "") << "something was started";
    const std::string start = "qvdevice: " + folder.path().string() + "/";
    EXPECT_THAT(ended.err, StartsWith(start));
    return ended.err.substr(std::min(start.size(), ended.err.size()));
  }

  const WorkFolder folder;
};

TEST_F(Scenario, withATypoIsRefusedWithFileLineColumnAndTheNearestWord) {
  EXPECT_EQ(refusal("lanch Notes\n"), "scenario:1:1: there is no event \"lanch\"; did you mean \"launch\"?\n");
  EXPECT_EQ(refusal("\n instal Notes\n"), "scenario:2:2: there is no event \"instal\"; did you mean \"install\"?\n");
  EXPECT_EQ(refusal("chaptr One\n"), "scenario:1:1: there is no event \"chaptr\"; did you mean \"chapter\"?\n");
  EXPECT_EQ(refusal("devic system 12\n"), "scenario:1:1: there is no event \"devic\"; did you mean \"device\"?\n");
  EXPECT_EQ(refusal("launch Notes\n# used\nbackgruond\n"),
            "scenario:3:1: there is no event \"backgruond\"; did you mean \"background\"?\n");
}

TEST_F(Scenario, withATypoInItsLastLineStartsNothing) {
  EXPECT_THAT(refusal("launch Notes\nresign\nterminate\nlaunch Vault\nset authState 7x\n"),
              StartsWith("scenario:5:16: not JSON: "));
}

TEST_F(Scenario, withAnAppThatIsNotThereIsRefusedWithTheNearestName) {
  EXPECT_EQ(refusal("launch Nots\n"), "scenario:1:8: there is no app \"Nots\"; did you mean \"Notes\"?\n");
  EXPECT_EQ(refusal("install Vaul\n"), "scenario:1:9: there is no app \"Vaul\"; did you mean \"Vault\"?\n");
}

TEST_F(Scenario, withAPathToNoAppIsRefusedAtIt) {
  EXPECT_THAT(refusal("launch apps/Mine.app\n"), StartsWith("scenario:1:8: there is no app at "));
  EXPECT_THAT(refusal("launch Mine.app\n"), EndsWith("/Mine.app\n"));
  EXPECT_THAT(refusal("launch \"./scenario\"\n"), HasSubstr("is not an app: an app is a folder"));
}

TEST_F(Scenario, withoutAnAppToLaunchOrInstallIsRefused) {
  EXPECT_EQ(refusal("launch\n"), "scenario:1:7: launch needs an app\n");
  EXPECT_EQ(refusal("install # Notes\n"), "scenario:1:8: install needs an app\n");
  EXPECT_THAT(refusal("launch \"\"\n"), StartsWith("scenario:1:8: launch needs an app"));
  EXPECT_THAT(refusal("launch \"Notes\n"), StartsWith("scenario:1:14: not JSON: "));
}

TEST_F(Scenario, withPoliciesThatAreNotThereIsRefusedAtThem) {
  EXPECT_EQ(refusal("launch Notes policies p.json\n"),
            "scenario:1:23: there is no policies file at " + folder.path().string() + "/p.json\n");
  EXPECT_EQ(refusal("launch Notes policies\n"), "scenario:1:22: policies needs a file\n");
}

TEST_F(Scenario, withPoliciesThatTheSdkWouldRefuseIsRefusedAtTheirPlace) {
  folder.write("p.json", "{\n  \"printPolcy\": 1\n}");
  EXPECT_EQ(refusal("launch Notes policies p.json\n"),
            "p.json:2:3: unknown key \"printPolcy\"; did you mean \"printPolicy\"?\n");
  folder.write("p.json", "");
  EXPECT_THAT(refusal("launch Notes policies p.json\n"), StartsWith("p.json:1:1: "));
}

TEST_F(Scenario, inWhichSomethingHappensWithoutAnAppIsRefused) {
  EXPECT_EQ(refusal("chapter Morning\n resign\n"),
            "scenario:2:1: nothing can happen to an app before one is launched\n");
  EXPECT_EQ(refusal("launch Notes\nterminate\nresign\n"),
            "scenario:3:1: nothing happens to an app after terminate; launch one first\n");
  EXPECT_EQ(refusal("launch Notes\nends\nset printPolicy 1\n"),
            "scenario:3:1: nothing happens to an app after ends; launch one first\n");
}

TEST_F(Scenario, inWhichAnAppIsLaunchedOrInstalledWhileOneRunsIsRefused) {
  EXPECT_EQ(refusal("launch Notes\nlaunch Vault\n"),
            "scenario:2:1: Notes still runs; end it with terminate or ends before another app is launched\n");
  EXPECT_EQ(refusal("launch Notes\nresign\ninstall Manager\n"),
            "scenario:3:1: Notes still runs; end it with terminate or ends before another app is installed\n");
}

TEST_F(Scenario, withAnOddLaunchIsRefused) {
  const std::string options = " is too much after the app, unless it is \"policies\" and a file, or \"url\" and a URL, "
                              "then \"from\" and a bundle identifier\n";
  EXPECT_EQ(refusal("launch Notes Vault\n"), "scenario:1:14: \"Vault\"" + options);
  EXPECT_EQ(refusal("launch Notes from com.example.mail\n"), "scenario:1:14: \"from\"" + options);
  EXPECT_EQ(refusal("launch Notes url a://b url a://b\n"), "scenario:1:24: \"url\"" + options);
  EXPECT_EQ(refusal("launch Notes url notes\n"), "scenario:1:18: url needs a URL with a scheme; \"notes\" is none\n");
  EXPECT_EQ(refusal("launch Notes url a://b from\n"),
            "scenario:1:28: from needs the bundle identifier of the app that asks\n");
  EXPECT_EQ(refusal("install Notes now\n"), "scenario:1:15: \"now\" is too much after install\n");
}

TEST_F(Scenario, withADeviceThatIsNoneOrSaidTooLateIsRefused) {
  EXPECT_EQ(refusal("device\n"), "scenario:1:7: device needs system VERSION, idiom phone or idiom pad\n");
  EXPECT_EQ(refusal("device system twelve\n"),
            "scenario:1:15: system needs a version, as in 17.0; \"twelve\" is none\n");
  EXPECT_EQ(refusal("device system 12.\n"), "scenario:1:15: system needs a version, as in 17.0; \"12.\" is none\n");
  EXPECT_EQ(refusal("device idiom watch\n"), "scenario:1:14: idiom needs phone or pad; \"watch\" is neither\n");
  EXPECT_THAT(refusal("device idiom pad idiom pad\n"), HasSubstr("scenario:1:18: "));
  EXPECT_EQ(refusal("launch Notes\nterminate\ndevice system 12\n"),
            "scenario:3:1: what the device is must be said once, and first\n");
  EXPECT_EQ(refusal("device system 12\ndevice idiom pad\n"),
            "scenario:2:1: what the device is must be said once, and first\n");
}

TEST_F(Scenario, withoutALaunchIsRefused) {
  EXPECT_EQ(refusal(""), "scenario launches no app\n");
  EXPECT_EQ(refusal("chapter Nothing\ninstall Notes\n"), "scenario launches no app\n");
}

TEST_F(Scenario, withAChapterWithoutATitleIsRefused) {
  EXPECT_EQ(refusal("chapter\n"), "scenario:1:8: chapter needs a title\n");
}

TEST_F(Scenario, thatIsNotUtf8IsRefused) {
  EXPECT_EQ(refusal("launch Notes\ntype \xff\n"), "scenario:2:1: this line is not UTF-8\n");
}

TEST_F(Scenario, thatIsNotThereOrAFolderIsRefused) {
  const Ended missing = qvdevice({"play", folder.path() / "none"});
  EXPECT_EQ(missing.status, 66);
  EXPECT_EQ(missing.err, "qvdevice: the scenario " + (folder.path() / "none").string() + " cannot be read\n");
  const Ended directory = qvdevice({"play", folder.path()});
  EXPECT_EQ(directory.status, 66);
  EXPECT_EQ(directory.err, "qvdevice: the scenario " + folder.path().string() + " cannot be read\n");
}

} // namespace
