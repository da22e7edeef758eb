// The sample app's ways out, from the events file to what other apps, the printer and the pasteboard have afterwards.
#include "../sharing/OtherApps.h"
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Files = std::map<std::string, std::string>;

const std::string kNote = "Milk\nBread\nApples\n";

constexpr const char* kEverything = R"({"ready": true, "authState": 1, "managedPolicy": 2, "openInPolicy": 1,
                                        "pasteboardPolicy": 1, "printPolicy": 1})";
constexpr const char* kNothing = R"({"ready": true, "authState": 1, "managedPolicy": 2, "openInPolicy": 0,
                                     "pasteboardPolicy": 0, "printPolicy": 0})";
constexpr const char* kExampleOnly = R"({"ready": true, "authState": 1, "managedPolicy": 2, "openInPolicy": 2,
                                         "openInWhitelist": ["com.example."], "pasteboardPolicy": 0,
                                         "printPolicy": 0})";

class WaysOut : public testing::Test {
protected:
  void SetUp() override { installOtherApps(device); }

  Ended run(const std::string& policies, const std::string& events, const std::string& release = "17.0",
            const std::vector<std::string>& more = {}) const {
    std::vector<std::string> arguments{"run",
                                       "--json",
                                       "--device",
                                       device,
                                       "--system-version",
                                       release,
                                       "--policies",
                                       folder.write("policies.json", policies),
                                       "--events",
                                       folder.write("events", events)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.push_back(NOTES_APP);
    return qvdevice(arguments);
  }

  /// Runs to a good end and answers what left the app.
  Files left(const std::string& policies, const std::string& events, const std::string& release = "17.0") const {
    const Ended ended = run(policies, events, release);
    EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
    return takeWhatLeft(device);
  }

  static std::string end(const Ended& ended) { return objectsOf(ended.out, "end")[0]["sentence"]; }

  static std::vector<std::string> offered(const Ended& ended, const std::string& kind) {
    for (const auto& object : objectsOf(ended.out, kind)) {
      if (object.contains("offered")) {
        return object["offered"];
      }
    }
    return {"nothing was shown"};
  }

  const WorkFolder folder;
  const std::string device = folder.path() / "device";
};

TEST_F(WaysOut, leadSomewhereWhenEverythingIsAllowed) {
  EXPECT_EQ(left(kEverything, "tap Share\nchoose Mail\n"),
            (Files{{"Outbox/com.apple.UIKit.activity.Mail/groceries.txt", kNote}}));
  EXPECT_EQ(left(kEverything, "tap Share\nchoose Post\n"),
            (Files{{"Apps/org.other.social/Documents/Inbox/groceries.txt", kNote}}));
  EXPECT_EQ(left(kEverything, "tap Share\nchoose Copy to Other Reader\n", "11.0"),
            (Files{{"Apps/org.other.reader/Documents/Inbox/groceries.txt", kNote}}));
  EXPECT_EQ(left(kEverything, "tap Open in\nchoose Other Reader\n"),
            (Files{{"Apps/org.other.reader/Documents/Inbox/groceries.txt", kNote}}));
  EXPECT_EQ(left(kEverything, "tap Print\n"), (Files{{"Print/groceries.txt", kNote}}));
}

TEST_F(WaysOut, areClosedWhenNothingIsAllowed) {
  const Ended sheet = run(kNothing, "tap Share\nchoose Mail\n");
  EXPECT_EQ(sheet.status, 1);
  EXPECT_THAT(end(sheet), HasSubstr("(line 2 of the events) refused \"choose\": \"Mail\" is not offered"));
  const Ended menu = run(kNothing, "tap Open in\nchoose Other Reader\n");
  EXPECT_THAT(end(menu), HasSubstr("there is nothing to choose from"));
  EXPECT_THAT(menu.out, HasSubstr("No other app can open the note."));
  EXPECT_THAT(run(kNothing, "tap Print\n").out, HasSubstr("There is nothing to print with."));
  EXPECT_EQ(takeWhatLeft(device), Files());
}

TEST_F(WaysOut, leadToTheAppsOfAWhitelistOnly) {
  EXPECT_THAT(offered(run(kExampleOnly, "tap Share\n", "10.0"), "sheet"),
              ElementsAre("com.example.board.pin", "com.apple.UIKit.activity.Open.Copy.com.example.mail"));
  EXPECT_THAT(offered(run(kExampleOnly, "tap Open in\n"), "openInMenu"), ElementsAre("com.example.mail"));
  EXPECT_EQ(left(kExampleOnly, "tap Open in\nchoose Example Mail\n"),
            (Files{{"Apps/com.example.mail/Documents/Inbox/groceries.txt", kNote}}));
}

TEST_F(WaysOut, thatAreStillShownAreClosedByAnAdministrator) {
  const Ended ended = run(kEverything, "tap Share\nset openInPolicy 0\nchoose Post\n");
  EXPECT_EQ(ended.status, 0) << ended.out;
  EXPECT_THAT(ended.out, HasSubstr("Blocking action with activity identifier org.other.social.post"));
  EXPECT_EQ(takeWhatLeft(device), Files());
}

TEST_F(WaysOut, includeCopyAndCutInTheEditMenuOnlyWhenThePasteboardIsAllowed) {
  EXPECT_THAT(offered(run(kEverything, "tap Edit\nmenu\n"), "menu"), ElementsAre("Cut", "Copy", "Capitals"));
  EXPECT_THAT(offered(run(kNothing, "tap Edit\nmenu\n"), "menu"), ElementsAre("Capitals"));
  const Ended refused = run(kNothing, "tap Edit\nmenu\nchoose Copy\n");
  EXPECT_THAT(end(refused), HasSubstr("\"Copy\" is not offered; what is offered is \"Capitals\""));
}

TEST_F(WaysOut, thatCopyLeaveTheTextForTheNextApp) {
  EXPECT_EQ(run(kEverything, "tap Edit\nmenu\nchoose Copy\n").status, 0);
  const Ended pasted = run(kEverything, "tap Edit\nmenu\nchoose Paste\nmenu\nchoose Capitals\n");
  EXPECT_EQ(pasted.status, 0) << pasted.out;
  EXPECT_THAT(offered(pasted, "menu"), ElementsAre("Cut", "Copy", "Paste", "Capitals"));
  EXPECT_THAT(pasted.out, HasSubstr("The title is now GROCERIES."));
}

TEST_F(WaysOut, toAPrinterAreClosedOnADeviceWithoutOne) {
  const Ended ended = run(kEverything, "tap Print\ntap Share\n", "17.0", {"--without-printing"});
  EXPECT_EQ(ended.status, 0) << ended.out;
  EXPECT_THAT(ended.out, HasSubstr("There is nothing to print with."));
  EXPECT_THAT(offered(ended, "sheet"), Not(Contains("com.apple.UIKit.activity.Print")));
  EXPECT_EQ(takeWhatLeft(device), Files());
}

TEST_F(WaysOut, areToldToAPersonInWords) {
  const Ended ended = qvdevice({"run", "--device", device, "--policies", folder.write("policies.json", kEverything),
                                "--events", folder.write("events", "tap Share\nchoose Mail\ntap Print\n"), NOTES_APP});
  EXPECT_EQ(ended.status, 0) << ended.out;
  std::size_t place = 0;
  for (const char* text : {"the user taps \"Share\"", "the share sheet offers com.apple.UIKit.activity.AirDrop, ",
                           "the user chooses \"Mail\"", "groceries.txt is handed to com.apple.UIKit.activity.Mail",
                           "groceries.txt is printed"}) {
    const std::size_t found = ended.out.find(text, place);
    ASSERT_NE(found, std::string::npos) << text << "\nis not where it should be in\n" << ended.out;
    place = found;
  }
}

TEST_F(WaysOut, areRefusedWhereNothingIsShownToChooseFrom) {
  EXPECT_THAT(end(run(kEverything, "choose Mail\n")),
              HasSubstr("there is nothing to choose from: no menu and no share sheet is shown"));
  EXPECT_THAT(end(run(kEverything, "menu\n")), HasSubstr("there is nothing to be done with what is selected"));
}

} // namespace
