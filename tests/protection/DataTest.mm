#include "Protection.h"

#include <sys/stat.h>
#include <thread>

using Data = Protection;

TEST_F(Data, WrittenToAFileIsProtected) {
  EXPECT_TRUE([bytes() writeToFile:path(@"a") atomically:NO]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_TRUE([[NSData dataWithContentsOfFile:path(@"a")] isEqual:bytes()]);
}

TEST_F(Data, WrittenToAURLIsProtected) {
  EXPECT_TRUE([bytes() writeToURL:url(@"a") atomically:YES]);
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(Data, WrittenWithOptionsIsProtected) {
  NSError *error = nil;
  EXPECT_TRUE([bytes() writeToFile:path(@"a") options:0 error:&error]);
  EXPECT_TRUE([bytes() writeToURL:url(@"b") options:NSDataWritingAtomic error:&error]);
  EXPECT_EQ(error, nil);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(classOf(@"b"), kRaised);
}

TEST_F(Data, WrittenWithAnExplicitOptionForNoProtectionIsRaisedRightAfterwards) {
  EXPECT_TRUE([bytes() writeToFile:path(@"a") options:NSDataWritingFileProtectionNone error:NULL]);
  EXPECT_TRUE([bytes() writeToURL:url(@"b") options:NSDataWritingFileProtectionNone | NSDataWritingAtomic error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(classOf(@"b"), kRaised);
}

TEST_F(Data, WrittenWithAnotherClassKeepsIt) {
  EXPECT_TRUE([bytes() writeToFile:path(@"a") options:NSDataWritingFileProtectionComplete error:NULL]);
  EXPECT_TRUE([bytes() writeToURL:url(@"b") options:NSDataWritingFileProtectionCompleteUnlessOpen error:NULL]);
  EXPECT_EQ(classOf(@"a"), kComplete);
  EXPECT_EQ(classOf(@"b"), kUnlessOpen);
}

TEST_F(Data, WrittenInPlaceIntoAFileOfAStrongerClassLeavesItThatClass) {
  EXPECT_TRUE([bytes() writeToFile:path(@"a") options:NSDataWritingFileProtectionComplete error:NULL]);
  EXPECT_TRUE([bytes() writeToFile:path(@"a") atomically:NO]);
  EXPECT_EQ(classOf(@"a"), kComplete);
}

TEST_F(Data, WrittenAtomicallyProtectsTheFinalItemAndLeavesNoOther) {
  EXPECT_TRUE([bytes() writeToFile:path(@"a") atomically:YES]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  NSArray *content = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:folder error:NULL];
  EXPECT_EQ([content count], 1u);
}

TEST_F(Data, ThatFailsToBeWrittenReturnsNoWithThePlatformsErrorAndLogsNothing) {
  NSError *error = nil;
  EXPECT_FALSE([bytes() writeToFile:impossible() options:0 error:&error]);
  EXPECT_NE(error, nil);
  EXPECT_FALSE([bytes() writeToFile:impossible() atomically:YES]);
  EXPECT_FALSE([bytes() writeToURL:impossibleURL() atomically:NO]);
  EXPECT_FALSE([bytes() writeToURL:impossibleURL() options:NSDataWritingAtomic error:NULL]);
  EXPECT_TRUE(support::log().empty());
  EXPECT_FALSE(support::exists(path(@"missing")));
}

TEST_F(Data, ThatFailsToBeWrittenLeavesTheProtectionOfWhatStandsThere) {
  EXPECT_FALSE([bytes() writeToFile:occupied() atomically:NO]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([bytes() writeToFile:occupied() atomically:YES]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([bytes() writeToURL:occupiedURL() atomically:NO]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([bytes() writeToFile:occupied() options:0 error:NULL]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([bytes() writeToURL:occupiedURL() options:0 error:NULL]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Data, WrittenFromSeveralThreadsIsProtectedEveryTime) {
  std::vector<std::thread> threads;
  NSString *const inside = folder;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t, inside] {
      NSAutoreleasePool *inner = [[NSAutoreleasePool alloc] init];
      for (int i = 0; i < 25; ++i) {
        NSString *name = [NSString stringWithFormat:@"%d-%d", t, i];
        NSData *data = [name dataUsingEncoding:NSUTF8StringEncoding];
        EXPECT_TRUE([data writeToFile:[inside stringByAppendingPathComponent:name] atomically:(i % 2) == 0]);
      }
      [inner drain];
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  for (int t = 0; t < 4; ++t) {
    for (int i = 0; i < 25; ++i) {
      NSString *name = [NSString stringWithFormat:@"%d-%d", t, i];
      EXPECT_EQ(classOf(name), kRaised) << [name UTF8String];
    }
  }
}

TEST_F(Data, WrittenToAURLThatIsNoFileURLGivesThePlatformsAnswerAndLogsNothing) {
  NSURL *elsewhere = [NSURL URLWithString:@"http://127.0.0.1:1/nothing"];
  EXPECT_FALSE([bytes() writeToURL:elsewhere atomically:NO]);
  EXPECT_TRUE(support::log(0).empty());
}
