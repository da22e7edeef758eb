// An extension that does as it should, and the end of its process.
#import "Hosted.h"

#include <fstream>
#include <iterator>

namespace {

class Extension : public Hosted {
protected:
  NSDictionary *answer() { return [[returnedItems objectAtIndex:0] userInfo]; }
};

TEST_F(Extension, IsFoundByItsIdentifierInAnInstalledApp) {
  NSError *error = nil;
  NSExtension *const found = [NSExtension extensionWithIdentifier:@"com.example.trial.behaving" error:&error];
  ASSERT_NE(found, nil);
  EXPECT_EQ(error, nil);
  EXPECT_EQ(text([found identifier]), "com.example.trial.behaving");
  EXPECT_EQ(text([[found attributes] objectForKey:@"NSExtensionPrincipalClass"]), "BehavingController");
}

TEST_F(Extension, OfAnUnknownOrMalformedIdentifierIsNotFound) {
  const id identifiers[] = {
    @"com.example.trial.missing",
    @"com.example.trial",
    @"",
    @"../behaving",
    @"com.example.trial.behaving\0",
    [NSNumber numberWithInt:7],
    @[],
    [NSNull null]
  };
  for (id identifier : identifiers) {
    NSError *error = nil;
    EXPECT_EQ([NSExtension extensionWithIdentifier:identifier error:&error], nil) << text(identifier);
    EXPECT_EQ(text([error domain]), "NSExtensionErrorDomain");
    EXPECT_EQ([error code], 1);
  }
  NSError *error = nil;
  EXPECT_EQ([NSExtension extensionWithIdentifier:nil error:&error], nil);
  EXPECT_EQ([error code], 1);
  EXPECT_EQ([NSExtension extensionWithIdentifier:nil error:NULL], nil);
}

TEST_F(Extension, RunsInAProcessOfItsOwnAndIsShownOnTheMainThread) {
  ask(@"wait");
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_EQ(noted(), Notes{"shown"});
  EXPECT_TRUE(onMainThread[0]);
  EXPECT_TRUE([controller isKindOfClass:[UIViewController class]]);
  EXPECT_NE(process(), 0);
  EXPECT_NE(process(), getpid());
  EXPECT_TRUE(isThere(process()));
}

TEST_F(Extension, AnswersOnceOnAThreadThatIsNotTheMainOne) {
  ask(@"complete");
  ASSERT_TRUE(runUntilNoted(2));
  runForAWhile();
  EXPECT_EQ(noted(), (Notes{"shown", "completed"}));
  EXPECT_FALSE(onMainThread[1]);
  ASSERT_EQ([returnedItems count], 1u);
  EXPECT_EQ(text([answer() objectForKey:@"result"]), "TRUE");
  EXPECT_EQ(text([answer() objectForKey:@"ak"]), "a");
  EXPECT_TRUE([[answer() objectForKey:@"sk"] isEqual:[NSData dataWithBytes:"\0\1" length:2]]);
}

TEST_F(Extension, MayAnswerWithoutItems) {
  ask(@"complete without items");
  ASSERT_TRUE(runUntilNoted(2));
  EXPECT_EQ(noted(), (Notes{"shown", "completed"}));
  EXPECT_EQ([returnedItems count], 0u);
}

TEST_F(Extension, MayAnswerBeforeItIsShown) {
  ask(@"answer while loading");
  ASSERT_TRUE(runUntilNoted(1));
  runForAWhile();
  EXPECT_EQ(noted(), Notes{"completed"});
}

TEST_F(Extension, MayCancelWithAReason) {
  ask(@"cancel");
  ASSERT_TRUE(runUntilNoted(2));
  runForAWhile();
  EXPECT_EQ(noted(), (Notes{"shown", "cancelled Trial 7 Not today"}));
  EXPECT_FALSE(onMainThread[1]);
}

TEST_F(Extension, MayCancelWithoutAReason) {
  ask(@"cancel without a reason");
  ASSERT_TRUE(runUntilNoted(2));
  EXPECT_EQ(noted()[1], "cancelled NSExtensionErrorDomain 3 The extension cancelled the request.");
}

TEST_F(Extension, GetsTheItemsWithTheirAttachments) {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  NSMutableData *const large = [NSMutableData dataWithLength:3000000];
  [item setUserInfo:@{@"do" : @"echo", @"large" : large}];
  [item setAttachments:@[ [[[NSItemProvider alloc] initWithItem:@{@"FK" : [NSData dataWithBytes:"\7" length:1]}
                                                 typeIdentifier:@"com.example.passcodeextension.data"] autorelease] ]];
  askWith(@[ item ]);
  ASSERT_TRUE(runUntilNoted(2));
  EXPECT_EQ(noted(), (Notes{"shown", "completed"}));
  EXPECT_TRUE([[answer() objectForKey:@"large"] isEqual:large]);
  NSItemProvider *const provider = [[[returnedItems objectAtIndex:0] attachments] objectAtIndex:0];
  EXPECT_EQ(text([provider registeredTypeIdentifiers]), text(@[ @"com.example.passcodeextension.data" ]));
}

TEST_F(Extension, IsConfinedToAContainerOfItsOwnAndRunsTheSameSystem) {
  NSString *const path = [NSHomeDirectory() stringByAppendingPathComponent:@"Documents/taken"];
  ask(@"write outside", @{@"path" : path});
  ASSERT_TRUE(runUntilNoted(2));
  ASSERT_EQ(noted(), (Notes{"shown", "completed"}));
  EXPECT_FALSE([[answer() objectForKey:@"outside"] boolValue]);
  EXPECT_TRUE([[answer() objectForKey:@"home"] boolValue]);
  EXPECT_NE(text([answer() objectForKey:@"container"]), text(NSHomeDirectory()));
  EXPECT_TRUE([[answer() objectForKey:@"bundle"] hasSuffix:@"Apps/com.example.trial/PlugIns/Behaving.appex"]);
  EXPECT_EQ(text([answer() objectForKey:@"version"]), text([[UIDevice currentDevice] systemVersion]));
  EXPECT_FALSE([[NSFileManager defaultManager] fileExistsAtPath:path]);
}

TEST_F(Extension, GoesWhenItsHostReleasesIt) {
  ask(@"wait");
  ASSERT_TRUE(runUntilNoted(1));
  const int pid = process();
  [extension release];
  extension = nil;
  EXPECT_TRUE(runUntilGone(pid));
  EXPECT_EQ(noted(), Notes{"shown"});
}

TEST_F(Extension, GoesWhenItsViewControllerGoes) {
  ask(@"wait");
  ASSERT_TRUE(runUntilNoted(1));
  const int pid = process();
  [controller release];
  controller = nil;
  EXPECT_TRUE(runUntilGone(pid));
  runForAWhile();
  EXPECT_EQ(noted(), Notes{"shown"});
  EXPECT_EQ(process(), 0);
}

TEST_F(Extension, GoesWhenItIsDismissed) {
  UIViewController *const host = [[[UIViewController alloc] init] autorelease];
  ask(@"wait");
  ASSERT_TRUE(runUntilNoted(1));
  const int pid = process();
  NSAutoreleasePool *const presenting = [[NSAutoreleasePool alloc] init];
  [host presentViewController:controller animated:NO completion:nil];
  [presenting drain];
  [controller release];
  controller = nil;
  runForAWhile();
  EXPECT_TRUE(isThere(pid));
  NSAutoreleasePool *const dismissing = [[NSAutoreleasePool alloc] init];
  [host dismissViewControllerAnimated:NO completion:nil];
  [dismissing drain];
  EXPECT_TRUE(runUntilGone(pid));
}

TEST_F(Extension, ReleasedAtOnceTellsNobodyAnything) {
  ask(@"complete");
  [extension release];
  extension = nil;
  runForAWhile();
  EXPECT_EQ(noted(), Notes{});
}

TEST_F(Extension, ServesTwoRequestsAtATime) {
  ask(@"wait");
  ASSERT_TRUE(runUntilNoted(1));
  const int first = process();
  NSExtension *const kept = extension;
  id const keptRequest = request;
  UIViewController *const keptController = controller;
  ask(@"complete");
  ASSERT_TRUE(runUntilNoted(3));
  EXPECT_NE(process(), first);
  EXPECT_TRUE(isThere(first));
  [kept release];
  [keptRequest release];
  [keptController release];
  EXPECT_TRUE(runUntilGone(first));
}

TEST_F(Extension, InputItemsThatAreNoneAreRefused) {
  askWith(@[ @"text" ]);
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_EQ(noted(), Notes{"failed NSExtensionErrorDomain 2"});
}

TEST_F(Extension, InputItemsThatCannotBeArchivedAreRefused) {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:@{@"do" : [[[NSLock alloc] init] autorelease]}];
  askWith(@[ item ]);
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_EQ(noted(), Notes{"failed NSExtensionErrorDomain 2"});
}

TEST_F(Extension, InputItemsAreRefusedAfterTheTurnOfTheMainThreadThatHandedThemOver) {
  askWith(@[ @"text" ]);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(noted(), Notes{});
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_FALSE(onMainThread[0]);
}

TEST_F(Extension, LeavesNothingBehindAfterManyRounds) {
  const auto round = [this](NSString *what, std::size_t notesOfIt) {
    const std::size_t before = noted().size();
    ask(what);
    ASSERT_TRUE(runUntilNoted(before + notesOfIt));
    const int pid = process();
    drop();
    if (pid != 0) ASSERT_TRUE(runUntilGone(pid));
  };
  round(@"complete", 2);
  ASSERT_TRUE(runUntil([] { return count("/proc/self/task") <= 8; }));
  runForAWhile();
  const std::size_t descriptors = count("/proc/self/fd");
  const std::size_t threads = count("/proc/self/task");
  for (int i = 0; i < 10; ++i) {
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    round(@"complete", 2);
    round(@"cancel", 2);
    round(@"crash", 2);
    round(@"crash while loading", 1);
    [inner drain];
  }
  EXPECT_TRUE(runUntil([=] { return count("/proc/self/fd") == descriptors; })) << count("/proc/self/fd");
  EXPECT_TRUE(runUntil([=] { return count("/proc/self/task") <= threads; })) << count("/proc/self/task");
  // Nor does whoever started them keep any, dead or alive: this process is its only child.
  const std::string parent = std::to_string(getppid());
  std::ifstream children("/proc/" + parent + "/task/" + parent + "/children");
  const std::vector<int> left{std::istream_iterator<int>(children), {}};
  EXPECT_EQ(left, std::vector<int>{getpid()});
}

} // namespace
