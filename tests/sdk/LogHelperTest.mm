// ZBLogHelper: log files that are named, dated, and few.
#import <Foundation/Foundation.h>
#import <Zorbel/ZBLogHelper.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class LogFiles : public testing::Test {
protected:
  void TearDown() override { [pool drain]; }

  static std::string make(NSString *name) {
    NSString *const path = [ZBLogHelper createLogFileWithName:name];
    return path ? [path UTF8String] : "(nil)";
  }

  static std::string dated(NSTimeInterval seconds, NSString *name = @"sandbox") {
    return [[ZBLogHelper appendDate:[NSDate dateWithTimeIntervalSince1970:seconds] toFileName:name] UTF8String];
  }

  std::set<std::string> files() const {
    std::set<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder))
      names.insert(entry.path().filename());
    return names;
  }

  void put(const std::string &name) const {
    fs::create_directories(folder);
    std::ofstream(folder / name) << "content";
  }

  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  const fs::path folder = [[NSHomeDirectory() stringByAppendingPathComponent:@"Library/Logs/Zorbel"] UTF8String];
};

TEST_F(LogFiles, areNamedWithTheDateInUniversalTimeToTheMillisecond) {
  EXPECT_EQ(dated(0), "sandbox_1970-01-01T00-00-00.000Z");
  EXPECT_EQ(dated(1400000000.25), "sandbox_2014-05-13T16-53-20.250Z");
  EXPECT_EQ(dated(-0.5), "sandbox_1969-12-31T23-59-59.500Z");
  EXPECT_EQ(dated(951782400, @"a_b%@"), "a_b%@_2000-02-29T00-00-00.000Z");
}

TEST_F(LogFiles, withoutADateOrANameHaveNone) {
  EXPECT_EQ([ZBLogHelper appendDate:nil toFileName:@"sandbox"], nil);
  EXPECT_EQ([ZBLogHelper appendDate:[NSDate date] toFileName:nil], nil);
}

TEST_F(LogFiles, areMadeEmptyWithTheFoldersAboveThem) {
  fs::remove_all(folder);
  EXPECT_EQ(make(@"sandbox"), folder / "sandbox.log");
  EXPECT_TRUE(fs::is_regular_file(folder / "sandbox.log"));
  EXPECT_EQ(fs::file_size(folder / "sandbox.log"), 0u);
}

TEST_F(LogFiles, ofANameThatIsTakenAreNumberedAndTheFirstIsLeftAlone) {
  put("sandbox.log");
  EXPECT_EQ(make(@"sandbox"), folder / "sandbox-2.log");
  EXPECT_EQ(make(@"sandbox"), folder / "sandbox-3.log");
  EXPECT_EQ(fs::file_size(folder / "sandbox.log"), 7u);
}

TEST_F(LogFiles, areNotMadeForANameThatIsNone) {
  EXPECT_EQ(make(nil), "(nil)");
  EXPECT_EQ(make(@""), "(nil)");
  EXPECT_EQ(make(@"../sandbox"), "(nil)");
  EXPECT_EQ(make([@"" stringByPaddingToLength:300 withString:@"long" startingAtIndex:0]), "(nil)");
}

TEST_F(LogFiles, areNotMadeWhereAFileIsInTheFoldersPlace) {
  fs::remove_all(folder);
  fs::create_directories(folder.parent_path());
  std::ofstream(folder) << "in the way";
  EXPECT_EQ(make(@"sandbox"), "(nil)");
  EXPECT_NO_THROW([ZBLogHelper rotateLogFiles]);
  EXPECT_TRUE(fs::is_regular_file(folder));
}

TEST_F(LogFiles, areNotMadeThroughALinkThatPointsElsewhere) {
  put("other");
  fs::create_symlink(folder / "target", folder / "sandbox.log");
  EXPECT_EQ(make(@"sandbox"), folder / "sandbox-2.log");
  EXPECT_FALSE(fs::exists(folder / "target"));
}

TEST_F(LogFiles, areRotatedSoThatTheNewestNineOfEachNameStay) {
  for (int i = 0; i < 12; ++i) {
    put(dated(1400000000 + i) + ".log");
    put(dated(1500000000 - i, @"other") + ".log");
  }
  [ZBLogHelper rotateLogFiles];
  std::set<std::string> expected;
  for (int i = 0; i < 9; ++i) {
    expected.insert(dated(1400000000 + 11 - i) + ".log");
    expected.insert(dated(1500000000 - i, @"other") + ".log");
  }
  EXPECT_EQ(files(), expected);
}

TEST_F(LogFiles, ofOneDateAreRotatedByTheirNumbers) {
  const std::string name = dated(1400000000);
  put(name + ".log");
  for (int i = 2; i <= 11; ++i)
    put(name + "-" + std::to_string(i) + ".log");
  [ZBLogHelper rotateLogFiles];
  std::set<std::string> expected;
  for (int i = 3; i <= 11; ++i)
    expected.insert(name + "-" + std::to_string(i) + ".log");
  EXPECT_EQ(files(), expected);
}

TEST_F(LogFiles, thatWereNotNamedHereAreNeverRotatedAway) {
  std::set<std::string> others{"zorbel.log",
                               "sandbox.log",
                               "sandbox_2014-05-13T16-53-20.250Z",
                               "sandbox_2014-05-13T16-53-2x.250Z.log",
                               "sandbox_2014-05-13T16-53-20.250Z-x.log",
                               "sandbox_2014-05-13T16-53-20.250Z-99999999999.log",
                               "sandbox_2014-05-13T16-53-20.250Z-.log",
                               "_2014-05-13T16-53-20.250Z.log"};
  for (const std::string &name : others)
    put(name);
  for (int i = 0; i < 9; ++i) {
    put(dated(1500000000 + i) + ".log");
    others.insert(dated(1500000000 + i) + ".log");
  }
  // A folder has the name of the oldest.
  fs::create_directories(folder / (dated(1400000000) + ".log"));
  others.insert(dated(1400000000) + ".log");
  [ZBLogHelper rotateLogFiles];
  EXPECT_EQ(files(), others);
}

TEST_F(LogFiles, areRotatedWithoutComplaintWhereThereAreNone) {
  fs::remove_all(folder);
  EXPECT_NO_THROW([ZBLogHelper rotateLogFiles]);
}

} // namespace
