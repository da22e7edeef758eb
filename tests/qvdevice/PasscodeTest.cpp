// An app that asks for the passcode by an extension of another, installed one; here without the library.
#include "Program.h"

#include <cerrno>
#include <csignal>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Asks, and says what comes of it.
const std::string kAsking = R"(
  UIWindow *window = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
  [window setRootViewController:[[[UIViewController alloc] init] autorelease]];
  [window makeKeyAndVisible];
  NSMutableDictionary *request = [NSMutableDictionary dictionary];
  [request setObject:[@"0123456789abcdef" dataUsingEncoding:NSASCIIStringEncoding] forKey:@"FK"];
  [request setObject:@"secret-pasteboard" forKey:@"ActivityPasteboardKey"];
  [request setObject:@"Asker" forKey:@"AppName"];
  NSExtensionItem *item = [[[NSExtensionItem alloc] init] autorelease];
  [item setAttachments:@[ [[[NSItemProvider alloc] initWithItem:request
      typeIdentifier:@"com.example.manager.passcodeextension.data"] autorelease] ]];
  NSError *failure = nil;
  NSExtension *extension = [[NSExtension extensionWithIdentifier:@"com.example.manager.passcode"
                                                           error:&failure] retain];
  if (!extension) {
    say(@"not found: %@", [failure localizedDescription]);
    return YES;
  }
  [extension setRequestCompletionBlock:^(id identifier, NSArray *items) {
    say(@"completed: %@", OnOneLine([[items objectAtIndex:0] userInfo]));
  }];
  [extension setRequestCancellationBlock:^(id identifier, NSError *error) {
    say(@"cancelled: %@", [error localizedDescription]);
  }];
  [extension setRequestInterruptionBlock:^(id identifier) {
    say(@"interrupted");
  }];
  [extension instantiateViewControllerWithInputItems:@[ item ]
      connectionHandler:^(id identifier, UIViewController *controller, NSError *error) {
    say(@"shown by %d", [extension pidForRequestIdentifier:identifier]);
    [[window rootViewController] presentViewController:controller animated:NO completion:nil];
  }];
)";

const std::string kHelpers = R"(
static void say(NSString *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  NSString *line = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  puts([line UTF8String]);
  fflush(stdout);
}
static NSString *OnOneLine(NSDictionary *dictionary) {
  NSMutableString *line = [NSMutableString string];
  for (NSString *key in [[dictionary allKeys] sortedArrayUsingSelector:@selector(compare:)])
    [line appendFormat:@"%@=%@ ", key, [dictionary objectForKey:key]];
  return line;
}
)";

class Passcode : public testing::Test {
protected:
  std::string source() const {
    std::string text = appSource(kAsking);
    const std::size_t start = text.find("@interface");
    return text.insert(start, "#import <Foundation/NSExtension.h>\n#include <stdio.h>\n" + kHelpers);
  }

  Ended run(const std::string& events, std::vector<std::string> options = {"--install", MANAGER_APP}) const {
    std::vector<std::string> arguments{"run", "--json", "--no-library", "--timeout", "20"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.insert(arguments.end(), {"--events", folder.write("events", events), app});
    return qvdevice(arguments);
  }

  /// What the app and the extension said, but for the process's number.
  static std::vector<std::string> said(const Ended& ended) {
    std::vector<std::string> lines;
    for (const auto& line : objectsOf(ended.out, "output")) {
      const std::string text = line["text"];
      lines.push_back(text.starts_with("shown by") ? "shown" : text);
    }
    return lines;
  }

  static pid_t processOf(const Ended& ended) {
    for (const auto& line : objectsOf(ended.out, "output")) {
      const std::string text = line["text"];
      if (text.starts_with("shown by ")) {
        return std::stoi(text.substr(std::string("shown by ").size()));
      }
    }
    return 0;
  }

  static std::vector<std::string> steps(const Ended& ended) {
    std::vector<std::string> events;
    for (const auto& record : objectsOf(ended.out, "extension")) {
      events.push_back(record["event"]);
    }
    return events;
  }

  const WorkFolder folder;
  const std::string app = folder.app("Asker", source());
  const std::string asked = "Passcode is asked for: FK 16 bytes, ActivityPasteboardKey 17 characters, AppName Asker, "
                            "AppIcon none, BundleId none";
};

TEST_F(Passcode, thatIsRightIsAnsweredWithTheKeys) {
  const Ended ended = run("extension tap 2\nextension tap 5\nextension tap 8\nextension tap 0\nextension tap OK\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(said(ended),
              testing::UnorderedElementsAre("shown", asked, "completed: ak=sample-ak result=TRUE sk=sample-sk "));
  EXPECT_THAT(steps(ended), ElementsAre("started", "shown", "completed"));
}

TEST_F(Passcode, thatIsWrongIsAnsweredWithoutKeys) {
  const Ended ended = run("extension tap 1\nextension tap OK\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(said(ended), Contains("completed: result=FALSE "));
}

TEST_F(Passcode, mayComeWithAMessage) {
  const Ended ended = run("extension tap Message\nextension tap OK\n");
  EXPECT_THAT(said(ended), Contains("completed: extensionMessage=The passcode expires tomorrow result=FALSE "));
}

TEST_F(Passcode, mayBeAnsweredTwiceAndTheSecondTimeDoesNotCount) {
  const Ended ended = run("extension tap OK\nextension tap OK\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(steps(ended), ElementsAre("started", "shown", "completed", "ignored"));
  const std::vector<std::string> lines = said(ended);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "completed: result=FALSE "), 1);
}

TEST_F(Passcode, mayBeCancelled) {
  const Ended ended = run("extension tap Cancel\n");
  EXPECT_THAT(said(ended), Contains("cancelled: The user cancelled."));
  EXPECT_THAT(steps(ended), ElementsAre("started", "shown", "cancelled"));
}

TEST_F(Passcode, whoseExtensionCrashesIsInterrupted) {
  const Ended ended = run("extension tap Crash\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(said(ended), Contains("interrupted"));
  EXPECT_THAT(ended.out, HasSubstr("its process ended by signal 6 (Aborted)"));
}

TEST_F(Passcode, whoseExtensionIsKilledIsInterrupted) {
  const Ended ended = run("extension tap 1\nextension kill\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(said(ended), Contains("interrupted"));
  EXPECT_THAT(ended.out, HasSubstr("its process ended by signal 9 (Killed)"));
}

TEST_F(Passcode, whoseExtensionHangsIsNeverAnsweredAndTheProcessGoesWithTheApp) {
  const Ended ended = run("extension tap Hang\nwait 300\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(said(ended), testing::UnorderedElementsAre("shown", asked));
  ASSERT_NE(processOf(ended), 0);
  EXPECT_EQ(kill(processOf(ended), 0), -1);
  EXPECT_EQ(errno, ESRCH);
}

TEST_F(Passcode, whoseExtensionHasNoSuchButtonIsRefused) {
  const Ended ended = run("extension tap Help\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, HasSubstr("Asker's extension (line 1 of the events) refused \\\"extension tap\\\": "));
}

TEST_F(Passcode, isNotAskedForWhenTheManagerIsNotInstalled) {
  const Ended ended = run("wait 10\n", {});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(said(ended), ElementsAre("not found: No extension has the identifier \"com.example.manager.passcode\"."));
}

TEST_F(Passcode, ofWhichNobodyIsAskedCannotBeTyped) {
  const Ended ended = run("extension tap 1\n", {});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, HasSubstr("no extension runs"));
}

TEST_F(Passcode, isAskedForByAnAppOfADeviceThatStays) {
  const std::string device = folder.path() / "device";
  EXPECT_THAT(said(run("extension tap OK\n", {"--device", device, "--install", MANAGER_APP})),
              Contains("completed: result=FALSE "));
  EXPECT_TRUE(fs::exists(fs::path(device) / "Apps/com.example.manager/PlugIns/Passcode.appex/Passcode"));
  EXPECT_THAT(said(run("extension tap OK\n", {"--device", device})), Contains("completed: result=FALSE "));
}

TEST_F(Passcode, isToldForPeopleToo) {
  const Ended ended = qvdevice(
      {"run", "--no-library", "--install", MANAGER_APP, "--events", folder.write("e", "extension tap Cancel\n"), app});
  EXPECT_THAT(ended.out, HasSubstr("extension   com.example.manager.passcode has a process of its own"));
  EXPECT_THAT(ended.out, HasSubstr("event       in the extension the user taps \"Cancel\""));
  EXPECT_THAT(ended.out, HasSubstr("extension   com.example.manager.passcode has cancelled"));
}

class Installation : public testing::Test {
protected:
  const WorkFolder folder;
  const fs::path device = folder.path() / "device";
  const fs::path installed = device / "Apps/com.example.manager";

  Ended install(const std::string& app) const {
    return qvdevice({"exec", "--device", device, "--install", app, "--", "/bin/true"});
  }
};

TEST_F(Installation, replacesAnOlderAppAndKeepsItsDocuments) {
  fs::create_directories(installed / "Documents");
  std::ofstream(installed / "Documents/letter") << "Dear";
  std::ofstream(installed / "old") << "old";
  EXPECT_EQ(install(MANAGER_APP).status, 0);
  EXPECT_TRUE(fs::exists(installed / "Documents/letter"));
  EXPECT_FALSE(fs::exists(installed / "old"));
  EXPECT_TRUE(fs::exists(installed / "PlugIns/Passcode.appex/Info.plist"));
}

TEST_F(Installation, ofWhatIsNoAppIsRefused) {
  const Ended ended = install(folder.path() / "missing.app");
  EXPECT_EQ(ended.status, 66);
  EXPECT_THAT(ended.err, HasSubstr("there is no app at"));
}

TEST_F(Installation, ofAnAppWithoutAUsableIdentifierIsRefused) {
  for (const char* identifier : {"", "../manager", ".hidden"}) {
    const fs::path app = folder.path() / "Bad.app";
    fs::create_directories(app);
    std::ofstream(app / "Info.plist")
        << "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key><string>Bad</string>"
           "<key>CFBundleIdentifier</key><string>"
        << identifier << "</string></dict></plist>";
    std::ofstream(app / "Bad") << "";
    fs::permissions(app / "Bad", fs::perms::owner_all);
    const Ended ended = install(app);
    EXPECT_EQ(ended.status, 65) << identifier;
    EXPECT_THAT(ended.err, HasSubstr("cannot be installed: its CFBundleIdentifier is"));
  }
}

} // namespace
