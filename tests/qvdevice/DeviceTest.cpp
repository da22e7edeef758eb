// Several apps on one device.
#include "Program.h"

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class SharedDevice : public testing::Test {
protected:
  Ended run(const std::string& app, std::vector<std::string> options = {}) const {
    std::vector<std::string> arguments{"run", "--json", "--device", device};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.push_back(app);
    Ended ended = qvdevice(arguments);
    EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
    return ended;
  }

  /// What the reader says that it sees.
  static std::vector<std::string> seenBy(const Ended& reader) {
    std::vector<std::string> seen;
    for (const auto& line : objectsOf(reader.out, "output")) {
      const std::string text = line["text"];
      if (const auto start = text.find("Reader sees "); start != std::string::npos) {
        seen.push_back(text.substr(start + std::string("Reader sees ").size()));
      }
    }
    return seen;
  }

  std::vector<std::string> seen() const { return seenBy(run(READER_APP, {"--no-library"})); }

  const WorkFolder folder;
  const std::string device = folder.path() / "device";
};

TEST_F(SharedDevice, hasOnePasteboardForAllItsApps) {
  run(LEAKER_APP, {"--no-library"});
  EXPECT_THAT(seen(), ElementsAre("com.example.leaker.note: {confidential = yes; }",
                                  "public.utf8-plain-text: The merger is off",
                                  "public.url: https://intranet.example.com/merger"));
}

TEST_F(SharedDevice, isMadeWhenItIsNotThereAndKept) {
  EXPECT_THAT(seen(), ElementsAre("nothing"));
  EXPECT_TRUE(fs::is_directory(device));
}

TEST_F(SharedDevice, isTheAppsOwnWhenNoneIsNamed) {
  for (const char* app : {LEAKER_APP, READER_APP}) {
    const Ended ended = qvdevice({"run", "--json", "--no-library", app}, {"QVDEVICE_DEVICE=" + folder.path().string()});
    EXPECT_EQ(ended.status, 0) << ended.err;
    if (app == std::string(READER_APP)) {
      EXPECT_THAT(seenBy(ended), ElementsAre("nothing"));
    }
  }
  EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(SharedDevice, isNotPassedOnToAProgramThatExecRuns) {
  const Ended ended = qvdevice({"exec", "--", "/bin/sh", "-c", "echo \"[$QVDEVICE_DEVICE]\""},
                               {"QVDEVICE_DEVICE=" + folder.path().string()});
  EXPECT_EQ(ended.out, "[]\n");
}

TEST_F(SharedDevice, isNoFolderOfSomebodysFiles) {
  folder.write("letter.txt", "Dear");
  const std::string path = folder.path();
  const Ended ended = qvdevice({"run", "--device", path, READER_APP});
  EXPECT_EQ(ended.status, 69);
  EXPECT_EQ(ended.err, "qvdevice: " + path + " is no device: it holds letter.txt; name an empty or a new folder\n");
  EXPECT_EQ(ended.out, "");
}

TEST_F(SharedDevice, isNoFile) {
  const std::string file = folder.write("device", "x");
  const Ended ended = qvdevice({"run", "--device", file, READER_APP});
  EXPECT_EQ(ended.status, 69);
  EXPECT_THAT(ended.err, HasSubstr(file));
}

TEST_F(SharedDevice, doesNotLieInTheContainerOfAnApp) {
  const std::string container = folder.path() / "container";
  const Ended ended = qvdevice({"run", "--device", container + "/Documents", "--container", container, READER_APP});
  EXPECT_EQ(ended.status, 69);
  EXPECT_THAT(ended.out, HasSubstr("lies in the container"));
}

TEST_F(SharedDevice, whosePasteboardCannotBeReadSaysSoAndShowsNothing) {
  fs::create_directory(device);
  std::ofstream(device + "/pasteboard.db") << std::string(4096, 'x');
  const Ended reader = run(READER_APP, {"--no-library"});
  EXPECT_THAT(seenBy(reader), ElementsAre("nothing"));
  const auto events = objectsOf(reader.out, "pasteboard");
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0]["event"], "refused");
  EXPECT_THAT(events[0]["reason"], HasSubstr("cannot be used: file is not a database"));
}

} // namespace
