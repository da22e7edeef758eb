// What a share sheet offers, and what leaves the app by each of its activities, offered or not, on every release and
// under every combination of policies. The file that is shared and the other apps are always the same; the whitelist is
// com.example., and the types for mail, copying and printing.
#include "OtherApps.h"
#include "support/Child.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using Lines = std::vector<std::string>;

// "if pasteboard" and "if print" stand behind what there is only while these policies allow it: pasteboard 1 and 2,
// print 1.
struct Row {
  std::string openIn; // the policy, or "not ready"
  Lines offered;      // types, in order
  Lines chosen;       // what is left by an activity that is chosen in the sheet; by all others nothing
  Lines byType;       // the same when it is performed by its type
};

const std::string kUIKit = "com.apple.UIKit.activity.";

const Lines kNothing;

// What goes out, by title, when everything is allowed.

const Lines kNetworks = {
    "Twitter > Outbox/com.apple.UIKit.activity.PostToTwitter/letter.txt",
    "Facebook > Outbox/com.apple.UIKit.activity.PostToFacebook/letter.txt",
    "Weibo > Outbox/com.apple.UIKit.activity.PostToWeibo/letter.txt",
    "Tencent Weibo > Outbox/com.apple.UIKit.activity.TencentWeibo/letter.txt",
    "Flickr > Outbox/com.apple.UIKit.activity.PostToFlickr/letter.txt",
    "Vimeo > Outbox/com.apple.UIKit.activity.PostToVimeo/letter.txt",
};

const Lines kServices = {
    "AirDrop > Outbox/com.apple.UIKit.activity.AirDrop/letter.txt",
    "Message > Outbox/com.apple.UIKit.activity.Message/letter.txt",
    "Mail > Outbox/com.apple.UIKit.activity.Mail/letter.txt",
    "Notes > Outbox/com.apple.mobilenotes.SharingExtension/letter.txt",
    "iCloud Photo Sharing > Outbox/com.apple.mobileslideshow.StreamShareService/letter.txt",
    "Add to Reading List > Outbox/com.apple.UIKit.activity.AddToReadingList/letter.txt",
    "Assign to Contact > Outbox/com.apple.UIKit.activity.AssignToContact/letter.txt",
    "Save Image > Outbox/com.apple.UIKit.activity.SaveToCameraRoll/letter.txt",
    "Quick Look > Outbox/com.apple.UIKit.activity.Quicklook/letter.txt",
    // Chosen although the sheet does not offer it under pasteboard policy 0: nothing but the open-in policy is asked
    // then. What it leaves on the pasteboard is taken away again when the app loses the user's attention.
    "Copy > pasteboard",
    "Print > Print/letter.txt if print",
};

const Lines kExtensions = {
    "Pin > Apps/com.example.board/Documents/Inbox/letter.txt",
    "Post > Apps/org.other.social/Documents/Inbox/letter.txt",
};

const Lines kOpenIn = {
    "Copy to Example Mail > Apps/com.example.mail/Documents/Inbox/letter.txt",
    "Copy to Other Reader > Apps/org.other.reader/Documents/Inbox/letter.txt",
};

// What the whitelist lets out.
const Lines kWhitelisted = {
    "Mail > Outbox/com.apple.UIKit.activity.Mail/letter.txt",
    "Pin > Apps/com.example.board/Documents/Inbox/letter.txt",
    "Copy > pasteboard",
    "Print > Print/letter.txt if print",
};
const Lines kWhitelistedOpenIn = {"Copy to Example Mail > Apps/com.example.mail/Documents/Inbox/letter.txt"};

Lines operator+(Lines left, const Lines& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

/// As a sheet has them, from the front of the row to its end.
Lines offeredUpTo10(const Lines& openIn) {
  return Lines{kUIKit + "AirDrop",        kUIKit + "Message",
               kUIKit + "Mail",           kUIKit + "PostToTwitter",
               kUIKit + "PostToFacebook", kUIKit + "PostToWeibo",
               kUIKit + "TencentWeibo",   "com.apple.mobilenotes.SharingExtension",
               "com.example.board.pin",   "org.other.social.post"} +
         openIn + Lines{kUIKit + "CopyToPasteboard if pasteboard", kUIKit + "Print if print", kUIKit + "Quicklook"};
}

Lines offeredFrom11(const Lines& openIn) {
  return Lines{kUIKit + "AirDrop",      kUIKit + "Message",
               kUIKit + "Mail",         "com.apple.mobilenotes.SharingExtension",
               "com.example.board.pin", "org.other.social.post"} +
         openIn + Lines{kUIKit + "CopyToPasteboard if pasteboard", kUIKit + "Print if print", kUIKit + "Quicklook"};
}

Lines whitelistedWith(const Lines& openIn) {
  return Lines{kUIKit + "Mail", "com.example.board.pin"} + openIn +
         Lines{kUIKit + "CopyToPasteboard if pasteboard", kUIKit + "Print if print"};
}

struct Release {
  std::string version;
  std::vector<Row> rows;
};

/// 8.2 to 10, which differ in how they call another app that opens documents. By its type alone such an activity is not
/// recognised as another app's, so no whitelist matches it.
Release upTo10(const std::string& version, const Lines& openIn, const Lines& whitelistedOpenIn) {
  const Lines all = kServices + kNetworks + kExtensions + kOpenIn;
  return {version,
          {{"not ready", kNothing, kNothing, kNothing},
           {"0", kNothing, kNothing, kNothing},
           {"1", offeredUpTo10(openIn), all, all},
           {"2", whitelistedWith(whitelistedOpenIn), kWhitelisted + kWhitelistedOpenIn, kWhitelisted}}};
}

const std::vector<Release> kReleases = {
    upTo10("8.2", {}, {}),
    upTo10("9.0", {kUIKit + "OpenWithApp-com.example.mail", kUIKit + "OpenWithApp-org.other.reader"},
           {kUIKit + "OpenWithApp-com.example.mail"}),
    upTo10("10.0", {kUIKit + "Open.Copy.com.example.mail", kUIKit + "Open.Copy.org.other.reader"},
           {kUIKit + "Open.Copy.com.example.mail"}),
    // One type for all apps, which no whitelist of apps matches; which app it is comes out afterwards.
    {"11.0",
     {{"not ready", kNothing, kNothing, kNothing},
      {"0", kNothing, kNothing, kNothing},
      {"1", offeredFrom11({kUIKit + "RemoteOpenInApplication-ByCopy", kUIKit + "RemoteOpenInApplication-ByCopy"}),
       kServices + kExtensions + kOpenIn, kNothing},
      {"2", whitelistedWith({}), kWhitelisted + kWhitelistedOpenIn, kNothing}}},
    {"13.5",
     {{"not ready", kNothing, kNothing, kNothing},
      {"0", kNothing, kNothing, kNothing},
      {"1", offeredFrom11({}), kServices + kExtensions, kNothing},
      {"2", whitelistedWith({}), kWhitelisted, kNothing}}},
    // Has no method that lists activities: only what is excluded by type is missing, and the rest does nothing.
    {"17.0",
     {{"not ready", {"com.example.board.pin", "org.other.social.post"}, kNothing, kNothing},
      {"0", {"com.example.board.pin", "org.other.social.post"}, kNothing, kNothing},
      {"1", offeredFrom11({}), kServices + kExtensions, kNothing},
      {"2",
       {kUIKit + "Mail", "com.example.board.pin", "org.other.social.post", kUIKit + "CopyToPasteboard if pasteboard",
        kUIKit + "Print if print"},
       kWhitelisted,
       kNothing}}},
};

// Not its bytes.
void PrintTo(const Release& release, std::ostream* stream) { *stream << release.version; }

struct Policies {
  std::string openIn;
  int pasteboard;
  int print;
};

/// The lines that hold under these policies, without their conditions.
Lines holding(const Lines& lines, const Policies& policies) {
  Lines result;
  for (const std::string& line : lines) {
    const auto at = line.find(" if ");
    const std::string condition = at == std::string::npos ? "" : line.substr(at + 4);
    const bool ready = policies.openIn != "not ready";
    if ((condition == "pasteboard" && !(ready && policies.pasteboard >= 1)) ||
        (condition == "print" && !(ready && policies.print == 1))) {
      continue;
    }
    result.push_back(line.substr(0, at));
  }
  return result;
}

/// By title, what was left; what left nothing does not count.
std::multimap<std::string, std::string> byTitle(const Lines& lines) {
  std::multimap<std::string, std::string> result;
  for (const std::string& line : lines) {
    const auto at = line.find(" > ");
    result.emplace(line.substr(0, at), line.substr(at + 3));
  }
  return result;
}

std::multimap<std::string, std::string> byTitle(const Json& tried) {
  std::multimap<std::string, std::string> result;
  for (const Json& each : tried) {
    for (const Json& left : each.at("left")) {
      result.emplace(each.at("tried"), left);
    }
  }
  return result;
}

/// What the host says on a device of that release, with other apps on it.
ChildResult runHost(const std::string& version, const std::string& argument = "table") {
  const fs::path folder = freshFolder();
  const fs::path device = folder / "device";
  fs::create_directories(folder / "container");
  installOtherApps(device);
  return runChild({SHEET_HOST, argument}, {{"QVDEVICE_CONTAINER", folder / "container"},
                                           {"QVDEVICE_DEVICE", device},
                                           {"QVDEVICE_SETTINGS", Json{{"systemVersion", version}}.dump()}});
}

class SheetTable : public testing::TestWithParam<Release> {};

} // namespace

TEST_P(SheetTable, HoldsUnderEveryCombinationOfPolicies) {
  const ChildResult result = runHost(GetParam().version);
  ASSERT_EQ(result.status, 0) << result.errors;

  int combinations = 0;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    const Json seen = Json::parse(line, nullptr, false);
    if (!seen.is_object()) {
      continue; // the SDK's log
    }
    ++combinations;
    const Policies policies{seen.at("ready") ? std::to_string(seen.at("openIn").get<int>()) : "not ready",
                            seen.at("pasteboard"), seen.at("print")};
    SCOPED_TRACE("open-in " + policies.openIn + ", pasteboard " + std::to_string(policies.pasteboard) + ", print " +
                 std::to_string(policies.print));
    int rows = 0;
    for (const Row& row : GetParam().rows) {
      if (row.openIn != policies.openIn) {
        continue;
      }
      ++rows;
      EXPECT_EQ(seen.at("offered").get<Lines>(), holding(row.offered, policies));
      EXPECT_EQ(byTitle(seen.at("chosen")), byTitle(holding(row.chosen, policies)));
      EXPECT_EQ(byTitle(seen.value("byType", Json::array())), byTitle(holding(row.byType, policies)));
    }
    EXPECT_EQ(rows, 1);
  }
  EXPECT_EQ(combinations, 19); // 3 x 3 x 2, and one without an SDK that is ready
}

INSTANTIATE_TEST_SUITE_P(Release, SheetTable, testing::ValuesIn(kReleases), [](const auto& release) {
  std::string name = release.param.version;
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
});

TEST(PrivateMethods, ComeAndGoWithTheReleases) {
  const std::string forItems = "_availableActivitiesForItems:";
  const std::string list = "_availableActivities";
  const std::string ofType = "_performActivityOfType:";
  const std::string perform = "_performActivity:";
  const std::string will =
      "shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismissPresentation:completion:";
  const std::string request =
      "shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:";
  const std::map<std::string, Lines> expected = {{"8.2", {forItems, list, ofType, perform}},
                                                 {"9.0", {forItems, list, ofType, perform}},
                                                 {"10.3.3", {forItems, list, ofType, perform}},
                                                 {"11.0", {list, perform, will, request}},
                                                 {"12.4", {list, perform, will, request}},
                                                 {"13.5", {list, perform}},
                                                 {"17.0", {perform}}};
  for (const auto& [version, methods] : expected) {
    std::string text;
    for (const std::string& method : methods) {
      text += "has " + method + "\n";
    }
    std::string said;
    std::istringstream lines(runHost(version, "methods").output);
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind("has ", 0) == 0) {
        said += line + "\n";
      }
    }
    EXPECT_EQ(said, text) << version;
  }
}
