#include "Program.h"

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kFirstUnlock = "NSFileProtectionCompleteUntilFirstUserAuthentication";

/// One text out of each object.
std::vector<std::string> texts(const std::vector<nlohmann::json>& objects, const char* key) {
  std::vector<std::string> all;
  for (const auto& object : objects) {
    all.push_back(object.value(key, ""));
  }
  return all;
}

std::string sentence(const Ended& ended) {
  const auto ends = objectsOf(ended.out, "end");
  EXPECT_EQ(ends.size(), 1u) << ended.out << ended.err;
  return ends.empty() ? "" : ends[0].value("sentence", "");
}

TEST(Run, ofAnOutsideAppShowsTheLibraryProtectWhatItWrites) {
  const WorkFolder folder;
  const std::string app = folder.app("Outside", appSource(R"(
    [@"text" writeToFile:[self pathOf:@"a.txt"] atomically:YES encoding:NSUTF8StringEncoding error:NULL];
    NSLog(@"written");)"));
  const Ended ended = qvdevice({"run", "--json", app});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  const auto changes = objectsOf(ended.out, "protection");
  ASSERT_EQ(changes.size(), 1u);
  EXPECT_EQ(changes[0]["path"], "Documents/a.txt");
  EXPECT_TRUE(changes[0]["from"].is_null());
  EXPECT_EQ(changes[0]["to"], kFirstUnlock);
  const auto items = objectsOf(ended.out, "item");
  ASSERT_EQ(items.size(), 1u);
  EXPECT_EQ(items[0]["path"], "Documents/a.txt");
  EXPECT_EQ(items[0]["protection"], kFirstUnlock);
  EXPECT_EQ(sentence(ended), "Outside was told to end and did, with status 0");
}

TEST(Run, withoutTheLibraryLeavesWhatTheAppWritesAsItIs) {
  const WorkFolder folder;
  const std::string app = folder.app("Outside", appSource(R"(
    [@"text" writeToFile:[self pathOf:@"a.txt"] atomically:YES encoding:NSUTF8StringEncoding error:NULL];)"));
  const Ended ended = qvdevice({"run", "--json", "--no-library", app});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_EQ(objectsOf(ended.out, "protection").size(), 0u);
  EXPECT_EQ(objectsOf(ended.out, "log").size(), 0u);
  const auto items = objectsOf(ended.out, "item");
  ASSERT_EQ(items.size(), 1u);
  EXPECT_TRUE(items[0]["protection"].is_null());
}

TEST(Run, withoutAnEventsFileTakesTheAppThroughItsWholeLife) {
  const WorkFolder folder;
  const Ended ended = qvdevice({"run", "--json", folder.app("Outside", appSource(""))});
  EXPECT_THAT(texts(objectsOf(ended.out, "lifecycle"), "event"),
              ElementsAre("willFinishLaunching", "didFinishLaunching", "didBecomeActive", "willResignActive",
                          "didEnterBackground", "willTerminate"));
}

TEST(Run, playsTheEventsOfAFileInOrderAndEndsTheAppAfterThem) {
  const WorkFolder folder;
  const std::string events = folder.write("events", "background # put away\n\nwait 20\nforeground\nresign\nactivate\n");
  const Ended ended = qvdevice({"run", "--json", "--events", events, folder.app("Outside", appSource(""))});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(texts(objectsOf(ended.out, "lifecycle"), "event"),
              ElementsAre("willFinishLaunching", "didFinishLaunching", "didBecomeActive", "willResignActive",
                          "didEnterBackground", "willEnterForeground", "didBecomeActive", "willResignActive",
                          "didBecomeActive", "willTerminate"));
}

TEST(Run, ofAnEventThatTheAppsStateDoesNotAllowFailsWithItsLineAndTheReason) {
  const WorkFolder folder;
  const std::string events = folder.write("events", "resign\nforeground\n");
  const Ended ended = qvdevice({"run", "--json", "--events", events, folder.app("Outside", appSource(""))});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(sentence(ended), "Outside (line 2 of the events) refused \"foreground\": the app is not in the background");
}

TEST(Run, keepsTheOrderOfWhatTheAppSaysAndWhatHappens) {
  const WorkFolder folder;
  const std::string app = folder.app("Outside", appSource(R"(
    NSDictionary *none = [NSDictionary dictionaryWithObject:NSFileProtectionComplete forKey:NSFileProtectionKey];
    for (int i = 0; i < 20; ++i) {
      NSString *path = [self pathOf:[NSString stringWithFormat:@"%d", i]];
      printf("before %d\n", i); fflush(stdout);
      [[NSFileManager defaultManager] createFileAtPath:path contents:nil attributes:none];
      fprintf(stderr, "after %d\n", i);
    })"));
  const Ended ended = qvdevice({"run", "--json", "--no-library", app});
  std::vector<std::string> seen;
  for (const auto& object : objectsOf(ended.out)) {
    if (object["kind"] == "output") {
      seen.push_back(object["text"]);
    } else if (object["kind"] == "protection") {
      seen.push_back(object["path"]);
    }
  }
  std::vector<std::string> expected;
  for (int i = 0; i < 20; ++i) {
    const std::string number = std::to_string(i);
    expected.insert(expected.end(), {"before " + number, "Documents/" + number, "after " + number});
  }
  EXPECT_EQ(seen, expected);
}

TEST(Run, ofAnAppThatCrashesSaysBySignalWhich) {
  const WorkFolder folder;
  const Ended ended = qvdevice({"run", "--json", folder.app("Crasher", appSource("kill(getpid(), SIGKILL);"))});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(sentence(ended), "Crasher crashed by signal 9 (Killed)");
}

TEST(Run, ofAnAppWithAnUncaughtExceptionFails) {
  const WorkFolder folder;
  const Ended ended = qvdevice(
      {"run", "--json", folder.app("Raiser", appSource("[NSException raise:@\"Odd\" format:@\"odd %d\", 1];"))});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(sentence(ended), "Raiser crashed by signal 6 (Aborted)");
  EXPECT_THAT(ended.out, HasSubstr("odd 1"));
}

TEST(Run, ofAnAppThatEndsByItselfFailsWhateverItsStatus) {
  const WorkFolder folder;
  const Ended three = qvdevice({"run", "--json", folder.app("Three", appSource("exit(3);"))});
  EXPECT_EQ(three.status, 1);
  EXPECT_EQ(sentence(three), "Three ended by itself with status 3, which a real app does not");
  const Ended zero = qvdevice({"run", "--json", folder.app("Zero", appSource("exit(0);"))});
  EXPECT_EQ(zero.status, 1);
  EXPECT_EQ(sentence(zero), "Zero ended by itself with status 0, which a real app does not");
}

TEST(Run, ofAnAppThatHangsAtLaunchEndsItWhenTheTimeIsUp) {
  const WorkFolder folder;
  const Ended ended =
      qvdevice({"run", "--json", "--timeout", "1", folder.app("Sleeper", appSource("for (;;) sleep(100);"))});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(sentence(ended), "Sleeper was not active after 1 second and was ended");
}

TEST(Run, removesItsContainerUnlessToldToKeepIt) {
  const WorkFolder folder;
  const std::string app = folder.app("Outside", appSource(""));
  const Ended gone = qvdevice({"run", "--json", app});
  const fs::path container = objectsOf(gone.out, "begin")[0]["container"].get<std::string>();
  EXPECT_FALSE(fs::exists(container));
  const Ended kept = qvdevice({"run", "--json", "--keep", app}, {"TMPDIR=" + folder.path().string()});
  EXPECT_TRUE(fs::exists(fs::path(objectsOf(kept.out, "begin")[0]["container"].get<std::string>()) / "Documents"));
}

TEST(Run, inANamedContainerFindsTheFilesOfTheRunBeforeAndTellsOnlyOfItsOwn) {
  const WorkFolder folder;
  const std::string container = folder.path() / "container";
  const std::string app = folder.app("Outside", appSource(R"(
    NSFileManager *manager = [NSFileManager defaultManager];
    NSString *name = [manager fileExistsAtPath:[self pathOf:@"first"]] ? @"second" : @"first";
    [name writeToFile:[self pathOf:name] atomically:YES encoding:NSUTF8StringEncoding error:NULL];)"));
  const Ended first = qvdevice({"run", "--json", "--container", container, app});
  EXPECT_THAT(texts(objectsOf(first.out, "item"), "path"), ElementsAre("Documents/first"));
  const Ended second = qvdevice({"run", "--json", "--container", container, app});
  EXPECT_THAT(texts(objectsOf(second.out, "item"), "path"), ElementsAre("Documents/second"));
}

TEST(Run, refusesAContainerThatHoldsWhatNoContainerHolds) {
  const WorkFolder folder;
  const std::string file = folder.write("precious", "x");
  const Ended ended = qvdevice({"run", "--container", folder.path(), NOTES_APP});
  EXPECT_EQ(ended.status, 69);
  EXPECT_EQ(ended.err, "qvdevice: " + folder.path().string() +
                           " is no app's container: it holds precious; name an empty or a new folder\n");
  EXPECT_FALSE(fs::exists(folder.path() / "Documents"));
}

TEST(Run, replacesALinkInTheAppsPlaceAndLeavesWhatItLeadsTo) {
  const WorkFolder folder;
  const fs::path container = folder.path() / "container", precious = folder.path() / "precious";
  fs::create_directories(container);
  fs::create_directories(precious / "folder");
  const std::string app = folder.app("Outside", appSource(""));
  const fs::perms readOnly = fs::perms::owner_read | fs::perms::owner_exec;
  fs::permissions(precious / "folder", readOnly);
  for (const char* target : {"../precious", "nowhere"}) {
    fs::remove_all(container / "Outside.app");
    fs::create_symlink(target, container / "Outside.app");
    const Ended ended = qvdevice({"run", "--json", "--container", container, app});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_TRUE(fs::exists(container / "Outside.app" / "Outside")) << target;
    EXPECT_FALSE(fs::is_symlink(container / "Outside.app")) << target;
  }
  EXPECT_EQ(fs::status(precious / "folder").permissions(), readOnly);
  EXPECT_EQ(std::distance(fs::directory_iterator(precious), {}), 1);
}

TEST(Run, givesTheAppTheDeviceThatWasAskedFor) {
  const WorkFolder folder;
  const std::string app =
      folder.app("Outside", appSource("printf(\"%s %d\\n\", [[[UIDevice currentDevice] systemVersion] UTF8String], "
                                      "(int)[[UIDevice currentDevice] userInterfaceIdiom]); fflush(stdout);"));
  // A sanitizer's symbolizer would inherit the preloaded library, and its complaints would be the app's output.
  const Ended ended = qvdevice({"run", "--json", "--system-version", "9.3", "--idiom", "pad", app},
                               {"ASAN_OPTIONS=symbolize=0:log_path=stdout"});
  EXPECT_THAT(texts(objectsOf(ended.out, "output"), "text"), ElementsAre("9.3 1"));
}

TEST(Run, withASettingThatNoDeviceHasSaysThatTheAppCouldNotStart) {
  const Ended ended = qvdevice({"run", "--json", "--system-version", "new", NOTES_APP});
  EXPECT_EQ(ended.status, 69);
  EXPECT_THAT(sentence(ended), HasSubstr("Notes could not start: QVDevice: "));
  EXPECT_EQ(qvdevice({"run", "--idiom", "watch", NOTES_APP}).status, 64);
}

TEST(Run, withMalformedPoliciesSaysFileLineAndReasonAndNothingOfTheAppRuns) {
  const WorkFolder folder;
  const std::string file = folder.write("policies.json", "{\n \"ready\": 1\n}");
  const Ended ended = qvdevice({"run", "--json", "--policies", file, NOTES_APP});
  EXPECT_EQ(ended.status, 65);
  EXPECT_EQ(sentence(ended),
            "Notes could not start: Zorbel: " + file + ":2:2: ready must be true or false, not the number 1");
  EXPECT_EQ(objectsOf(ended.out, "lifecycle").size(), 0u);
  EXPECT_EQ(objectsOf(ended.out, "log").size(), 0u);
}

TEST(Run, withPoliciesThatAreNotThereIsRefused) {
  const Ended ended = qvdevice({"run", "--policies", "/nowhere/policies.json", NOTES_APP});
  EXPECT_EQ(ended.status, 66);
  EXPECT_EQ(ended.err, "qvdevice: there is no policies file at /nowhere/policies.json\n");
}

TEST(Run, ofSomethingThatIsNoAppSaysWhatIsMissing) {
  const WorkFolder folder;
  const auto refusal = [](const std::string& app, int status) {
    const Ended ended = qvdevice({"run", app});
    EXPECT_EQ(ended.status, status);
    EXPECT_EQ(ended.out, "");
    return ended.err;
  };
  const std::string app = folder.path() / "My.app";
  EXPECT_EQ(refusal(app, 66), "qvdevice: there is no app at " + app + "\n");
  EXPECT_EQ(refusal(folder.write("file", ""), 66),
            "qvdevice: " + folder.path().string() +
                "/file is not an app: an app is a folder that holds an Info.plist\n");
  fs::create_directory(app);
  EXPECT_EQ(refusal(app, 66), "qvdevice: " + app + " is not an app: it holds no Info.plist\n");
  folder.write("My.app/Info.plist", "<plist><dict>");
  EXPECT_EQ(refusal(app, 65), "qvdevice: " + app + "/Info.plist is not a property list with a dictionary in it\n");
  folder.write("My.app/Info.plist", "<plist version=\"1.0\"><dict/></plist>");
  EXPECT_EQ(refusal(app, 65), "qvdevice: " + app + "/Info.plist names no executable (CFBundleExecutable)\n");
  const auto plist = [&](const std::string& name) {
    folder.write("My.app/Info.plist", "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key><string>" + name +
                                          "</string></dict></plist>");
  };
  plist("../My");
  EXPECT_EQ(refusal(app, 65), "qvdevice: " + app + "/Info.plist names an executable outside the app: ../My\n");
  plist("My");
  EXPECT_EQ(refusal(app, 66), "qvdevice: " + app + " does not hold its executable, My\n");
  folder.write("My.app/My", "text");
  EXPECT_EQ(refusal(app, 66), "qvdevice: " + app + "/My may not be executed\n");
}

TEST(Run, ofAProgramThatIsNotForThisMachineSaysThatItDoesNotStart) {
  const WorkFolder folder;
  const std::string app = folder.app("My", appSource(""));
  folder.write("My.app/My", "no program");
  const Ended ended = qvdevice({"run", app});
  EXPECT_EQ(ended.status, 69);
  EXPECT_THAT(ended.err, testing::MatchesRegex("qvdevice: My does not start: .*: Exec format error\n"));
}

TEST(Run, withoutATerminalWritesNoColours) {
  const Ended ended = qvdevice({"run", NOTES_APP}, {"TERM=xterm"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, Not(HasSubstr("\x1b")));
}

TEST(Qvdevice, withoutOrWithAnUnknownCommandIsRefusedAndHelpIsNot) {
  EXPECT_EQ(qvdevice({}).status, 64);
  EXPECT_EQ(qvdevice({"walk"}).status, 64);
  const Ended help = qvdevice({"--help"});
  EXPECT_EQ(help.status, 0);
  for (const char* command : {"run", "cc", "exec"}) {
    EXPECT_THAT(help.out, HasSubstr(command));
  }
  EXPECT_EQ(qvdevice({"cc", "--help"}).status, 0);
}

} // namespace
