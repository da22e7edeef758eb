#include "Program.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::vector<std::string> namesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string contentOf(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

TEST(Cc, makesABundleWithAnExecutableAndAnInfoPlist) {
  const WorkFolder folder;
  const fs::path app = folder.app("Outside", appSource("NSLog(@\"here\");"));
  EXPECT_EQ(namesIn(app), (std::vector<std::string>{"Info.plist", "Outside"}));
  EXPECT_THAT(contentOf(app / "Info.plist"), HasSubstr("<string>com.example.Outside</string>"));
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"Outside.app", "Outside.m"}));
}

TEST(Cc, makesAnAppThatNamesThePlatformAndNeverTheLibrary) {
  const WorkFolder folder;
  const fs::path app = folder.app("Outside", appSource(""));
  const std::string needed = runProgram({"/usr/bin/readelf", "-d", app / "Outside"}).out;
  EXPECT_THAT(needed, HasSubstr("libQVDevice.so"));
  EXPECT_THAT(needed, HasSubstr("libgnustep-base.so"));
  EXPECT_THAT(needed, testing::Not(HasSubstr("QVSandbox")));
  EXPECT_THAT(needed, testing::Not(HasSubstr("Zorbel")));
}

TEST(Cc, withACompileErrorPassesTheCompilersWordsAndStatusOnAndLeavesNothing) {
  const WorkFolder folder;
  const std::string source = folder.write("main.m", "int main(void) { return missing; }\n");
  const Ended ended = qvdevice({"cc", "-o", folder.path() / "Mine.app", source});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("main.m:1:25: error: use of undeclared identifier 'missing'"));
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"main.m"}));
}

TEST(Cc, withACompileErrorLeavesTheAppThatWasThere) {
  const WorkFolder folder;
  const fs::path app = folder.app("Mine", appSource("NSLog(@\"the first\");"));
  const std::string before = contentOf(app / "Mine");
  EXPECT_NE(qvdevice({"cc", "-o", app, folder.write("bad.m", "int main(")}).status, 0);
  EXPECT_EQ(contentOf(app / "Mine"), before);
}

TEST(Cc, withALinkErrorLeavesNothing) {
  const WorkFolder folder;
  const std::string source =
      folder.write("main.m", "void elsewhere(void); int main(void) { elsewhere(); return 0; }\n");
  const Ended ended = qvdevice({"cc", "-o", folder.path() / "Mine.app", source});
  EXPECT_NE(ended.status, 0);
  EXPECT_THAT(ended.err, HasSubstr("elsewhere"));
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"main.m"}));
}

TEST(Cc, passesOtherFlagsToTheCompiler) {
  const WorkFolder folder;
  const std::string source =
      folder.write("main.m", "#ifndef WANTED\n#error not wanted\n#endif\nint main(void) { return 0; }\n");
  EXPECT_NE(qvdevice({"cc", "-o", folder.path() / "Mine.app", source}).status, 0);
  EXPECT_EQ(qvdevice({"cc", "-DWANTED", "-o", folder.path() / "Mine.app", source, "-O1"}).status, 0);
}

TEST(Cc, takesSeveralSourcesInBothLanguagesAndTheFrameworksThatTheDeviceHas) {
  const WorkFolder folder;
  const std::string first = folder.write("main.m", "int answer(void); int main(void) { return answer(); }\n");
  const std::string second =
      folder.write("answer.mm", "#import <Foundation/Foundation.h>\n#include <string>\nextern \"C\" int answer() { "
                                "return int(std::string(\"x\").size()); }\n");
  const Ended ended = qvdevice(
      {"cc", "-framework", "UIKit", "-framework", "Foundation", first, second, "-o", folder.path() / "Mine.app"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  const Ended other = qvdevice({"cc", "-framework", "ARKit", first, "-o", folder.path() / "Other.app"});
  EXPECT_EQ(other.status, 64);
  EXPECT_EQ(other.err, "qvdevice: the device has no framework ARKit\n");
}

TEST(Cc, givesTheInfoPlistTheIdentifierThatWasNamed) {
  const WorkFolder folder;
  const std::string source = folder.write("main.m", appSource(""));
  ASSERT_EQ(qvdevice({"cc", "--identifier", "org.a&b.mine", "-o", folder.path() / "Mine.app", source}).status, 0);
  EXPECT_THAT(contentOf(folder.path() / "Mine.app" / "Info.plist"), HasSubstr("<string>org.a&amp;b.mine</string>"));
}

TEST(Cc, namesTheExecutableAsTheGivenInfoPlistDoes) {
  const WorkFolder folder;
  const std::string source = folder.write("main.m", appSource(""));
  const std::string plist =
      folder.write("My.plist", "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
                               "<key>CFBundleExecutable</key><string>Special</string></dict></plist>");
  const fs::path app = folder.path() / "Mine.app";
  ASSERT_EQ(qvdevice({"cc", "--plist", plist, "-o", app, source}).status, 0);
  EXPECT_EQ(namesIn(app), (std::vector<std::string>{"Info.plist", "Special"}));
  EXPECT_EQ(contentOf(app / "Info.plist"), contentOf(plist));
}

TEST(Cc, withAPlistThatNamesNoExecutableOrIsNoneIsRefused) {
  const WorkFolder folder;
  const std::string source = folder.write("main.m", appSource(""));
  for (const char* text :
       {"<plist version=\"1.0\"><dict></dict></plist>", "no plist at all", "<plist><string>x</string></plist>"}) {
    EXPECT_EQ(qvdevice({"cc", "--plist", folder.write("p", text), "-o", folder.path() / "Mine.app", source}).status, 65)
        << text;
  }
  EXPECT_FALSE(fs::exists(folder.path() / "Mine.app"));
}

TEST(Cc, withoutOutputOrSourceOrWithAWrongNameIsRefused) {
  const WorkFolder folder;
  const std::string source = folder.write("main.m", appSource(""));
  EXPECT_EQ(qvdevice({"cc", source}).err, "qvdevice: -o APP.app is missing: it names the app to make\n");
  EXPECT_EQ(qvdevice({"cc", "-o", "Mine", source}).err, "qvdevice: an app's name ends in .app; -o Mine does not\n");
  EXPECT_EQ(qvdevice({"cc", "-o", "Mine.app"}).err, "qvdevice: there is no source file to compile\n");
  EXPECT_EQ(qvdevice({"cc", source, "-o"}).err, "qvdevice: -o needs a value\n");
  EXPECT_EQ(qvdevice({"cc", "-c", "-o", "Mine.app", source}).err,
            "qvdevice: -c makes no app; name the sources and -o APP.app\n");
  EXPECT_EQ(qvdevice({"cc", source}).status, 64);
}

TEST(Cc, leavesAFolderThatIsNoAppAlone) {
  const WorkFolder folder;
  const std::string source = folder.write("main.m", appSource(""));
  const fs::path there = folder.path() / "Photos.app";
  fs::create_directory(there);
  std::ofstream(there / "picture") << "x";
  EXPECT_EQ(qvdevice({"cc", "-o", there, source}).status, 64);
  EXPECT_EQ(namesIn(there), (std::vector<std::string>{"picture"}));
}

} // namespace
