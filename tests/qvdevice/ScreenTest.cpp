// Pictures of the screen, from the events file to the files.
#include "PngFile.h"
#include "Program.h"

#include <algorithm>
#include <chrono>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

/// What somebody of Notes looks at, with the passcode's extension on the device.
class Screens : public testing::Test {
protected:
  Ended run(const std::string& events, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments{"run", "--events", folder.write("events", events), "--screens", screens};
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.push_back(NOTES_APP);
    return qvdevice(arguments);
  }
  /// On a release that leaves what is below on the screen, so that it is seen behind the extension.
  Ended runWithPasscode(const std::string& events, std::vector<std::string> more = {}) {
    more.insert(more.end(), {"--system-version", "16.4", "--install", MANAGER_APP, "--policies", AUTHENTICATE});
    return run(events, more);
  }

  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(screens)) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  PngFile picture(const std::string& name) const { return PngFile(screens / name); }

  WorkFolder folder;
  const fs::path screens = folder.path() / "new" / "screens";
};

TEST_F(Screens, areWrittenInTheirOrderUnderTheirTitles) {
  const Ended ended = run("screen Notes at start\nscreen\ntap Edit\nscreen \"Ünlike: Edit/menu\"\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(files(), ElementsAre("01-notes-at-start.png", "02-screen.png", "03-nlike-edit-menu.png"));
  const PngFile start = picture("01-notes-at-start.png");
  EXPECT_EQ(start.width(), 780u) << "390 points of two pixels";
  EXPECT_EQ(start.height(), 1688u);
  EXPECT_THAT(linesOf(ended.out), testing::Contains("  screen      01-notes-at-start.png (390x844)"));
}

TEST_F(Screens, goToTheReportAsPngInBase64) {
  const Ended ended =
      qvdevice({"run", "--json", "--events", folder.write("events", "screen Notes\nscreen\n"), NOTES_APP});
  ASSERT_EQ(ended.status, 0) << ended.err;
  const auto records = objectsOf(ended.out, "screen");
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0]["title"], "Notes");
  EXPECT_EQ(records[1]["title"], nullptr);
  EXPECT_EQ(records[0]["width"], 390);
  EXPECT_EQ(records[0]["height"], 844);
  EXPECT_EQ(records[0]["scale"], 2);
  EXPECT_FALSE(records[0].contains("file"));
  EXPECT_THAT(records[0]["png"].get<std::string>(), testing::StartsWith("iVBORw0KGgo"));
  EXPECT_EQ(objectsOf(ended.out, "event")[0]["title"], "Notes");
}

TEST_F(Screens, withoutAFolderAreALineInTheText) {
  const Ended ended = qvdevice({"run", "--events", folder.write("events", "screen My notes\n"), NOTES_APP});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(linesOf(ended.out), testing::Contains("  screen      \"My notes\" (390x844)"));
  EXPECT_THAT(ended.out, Not(HasSubstr("iVBOR")));
}

TEST_F(Screens, ofATabletAreATablets) {
  EXPECT_EQ(run("screen pad\n", {"--idiom", "pad"}).status, 0);
  EXPECT_EQ(picture("01-pad.png").width(), 1640u);
  EXPECT_EQ(picture("01-pad.png").height(), 2360u);
}

TEST_F(Screens, turnWithTheDevice) {
  EXPECT_EQ(run("rotate landscapeLeft\nscreen turned\n").status, 0);
  EXPECT_EQ(picture("01-turned.png").width(), 1688u);
  EXPECT_EQ(picture("01-turned.png").height(), 780u);
}

TEST_F(Screens, thatCannotBeWrittenAreAnErrorBeforeTheAppStarts) {
  const std::string file = folder.write("file", "");
  const Ended ended = qvdevice({"run", "--screens", file, "--events", folder.write("events", "screen\n"), NOTES_APP});
  EXPECT_EQ(ended.status, 69);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "qvdevice: no pictures of the screen can be written to " + file + ": Not a directory\n");
  const Ended below =
      qvdevice({"run", "--screens", file + "/below", "--events", folder.write("events", "screen\n"), NOTES_APP});
  EXPECT_EQ(below.status, 69);
  EXPECT_THAT(below.err, HasSubstr("/below: Not a directory"));
}

TEST_F(Screens, thatCanBeWrittenNoMoreEndTheRun) {
  fs::create_directories(screens / "02-screen.png");
  const Ended ended = run("screen\nscreen\n");
  EXPECT_EQ(ended.status, 69);
  EXPECT_THAT(ended.err, HasSubstr("02-screen.png cannot be written"));
}

TEST_F(Screens, withAnEmptyTitleAreRefusedWithTheirPlace) {
  const Ended ended = run("screen \"\"\n");
  EXPECT_EQ(ended.status, 65);
  EXPECT_THAT(ended.err, HasSubstr(":1:8: the title of a picture is not empty"));
}

TEST_F(Screens, showTheHomeScreenWhileTheAppIsInTheBackground) {
  EXPECT_EQ(run("screen app\nbackground\nscreen home\nforeground\nscreen back\n").status, 0);
  const Dot upper{41, 69, 133};
  EXPECT_LE(distance(picture("02-home.png").at(400, 2), upper), 3);
  EXPECT_GT(distance(picture("01-app.png").at(400, 2), upper), 100);
  EXPECT_EQ(picture("03-back.png").at(400, 2), picture("01-app.png").at(400, 2));
}

TEST_F(Screens, ofAnExtensionShowWhatItsOwnProcessDrew) {
  const Ended ended = runWithPasscode("authenticate\nextension tap 1\nscreen keys\nextension kill\nscreen gone\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  // What the extension draws covers what the app does: the pictures differ where its keys are.
  const PngFile keys = picture("01-keys.png"), gone = picture("02-gone.png");
  int different = 0;
  for (unsigned y = 0; y < keys.height(); y += 4) {
    for (unsigned x = 0; x < keys.width(); x += 4) {
      different += distance(keys.at(x, y), gone.at(x, y)) > 40 ? 1 : 0;
    }
  }
  EXPECT_GT(different, 500);
}

/// The largest step between two neighbours: letters have edges, what is blurred has none.
int sharpness(const PngFile& picture, unsigned left, unsigned top, unsigned right, unsigned bottom) {
  int largest = 0;
  for (unsigned y = top; y < bottom; ++y) {
    for (unsigned x = left; x < right; ++x) {
      largest = std::max(largest, distance(picture.at(x, y), picture.at(x + 1, y)));
    }
  }
  return largest;
}

TEST_F(Screens, behindThePasscodeAreBlurredByTheLibrary) {
  const Ended ended = runWithPasscode("screen before\nauthenticate\nextension tap 2\nscreen passcode\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  // The title of the app's screen, above which the keypad has nothing.
  EXPECT_GT(sharpness(picture("01-before.png"), 40, 120, 220, 200), 200);
  const PngFile passcode = picture("02-passcode.png");
  EXPECT_LT(sharpness(passcode, 40, 120, 220, 200), 20);
  EXPECT_GT(distance(passcode.at(130, 160), passcode.at(500, 160)), 8) << "its shade is left";
}

TEST_F(Screens, ofAShareSheetAreWhatThePoliciesLeave) {
  const std::string all =
      folder.write("all.json", R"({"ready": true, "authState": 1, "pasteboardPolicy": 1, "openInPolicy": 1})");
  const Ended ended = run("tap Share\nscreen all\n", {"--system-version", "12.4", "--policies", all});
  ASSERT_EQ(ended.status, 0) << ended.out << ended.err;
  const std::string none =
      folder.write("none.json", R"({"ready": true, "authState": 1, "pasteboardPolicy": 0, "openInPolicy": 0})");
  fs::rename(screens / "01-all.png", folder.path() / "all.png");
  ASSERT_EQ(run("tap Share\nscreen none\n", {"--system-version", "12.4", "--policies", none}).status, 0);
  // The darkened app ends where the sheet begins, which is higher the more it offers.
  const auto top = [](const PngFile& file) {
    unsigned y = file.height() - 1;
    while (y > 0 && distance(file.at(10, y), file.at(10, file.height() - 120)) < 3) {
      --y;
    }
    return y;
  };
  EXPECT_LT(top(PngFile(folder.path() / "all.png")) + 200, top(picture("01-none.png")));
}

TEST_F(Screens, haveNoEditMenuAfterTheUsersNextTouch) {
  const Ended ended = run("tap Edit\nmenu\nscreen menu\ntap Edit\nscreen touched\n", {"--json"});
  ASSERT_EQ(ended.status, 0) << ended.err;
  const auto menus = objectsOf(ended.out, "menu");
  ASSERT_EQ(menus.size(), 2u);
  EXPECT_EQ(menus[0]["event"], "shown");
  EXPECT_EQ(menus[1]["event"], "hidden");
  const Dot bar{38, 38, 41};
  const auto dark = [&](const PngFile& file) {
    int count = 0;
    for (unsigned y = 520; y < 640; ++y) {
      for (unsigned x = 0; x < 400; ++x) {
        count += distance(file.at(x, y), bar) < 3 ? 1 : 0;
      }
    }
    return count;
  };
  EXPECT_GT(dark(picture("01-menu.png")), 2000);
  EXPECT_LT(dark(picture("02-touched.png")), 50) << "some of a letter";
}

TEST_F(Screens, ofAnExtensionThatHangsHaveAGreyPlaceAndComeInTime) {
  const auto start = std::chrono::steady_clock::now();
  const Ended ended = runWithPasscode("authenticate\nextension tap Hang\nscreen hung\nscreen still\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(25)) << "less than an answer may take";
  const Dot grey{143, 143, 148};
  for (const char* name : {"01-hung.png", "02-still.png"}) {
    EXPECT_LE(distance(picture(name).at(300, 800), grey), 2) << name;
  }
}

} // namespace
