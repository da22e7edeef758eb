// Extensions that do not do what they should. An interrupted connection is 4097 in NSCocoaErrorDomain.
#import "Hosted.h"

#include "support/Support.h"

namespace {

class MisbehavingExtension : public Hosted {
protected:
  // What comes of an extension that does that, once all that can come has.
  Notes after(NSString *what, std::size_t count) {
    ask(what);
    EXPECT_TRUE(runUntilNoted(count));
    runForAWhile();
    return noted();
  }
};

const Notes kInterrupted{"shown", "interrupted"};

TEST_F(MisbehavingExtension, ThatIsKilledIsInterrupted) {
  ask(@"wait");
  ASSERT_TRUE(runUntilNoted(1));
  const int pid = process();
  ::kill(pid, SIGKILL);
  ASSERT_TRUE(runUntilNoted(2));
  runForAWhile();
  EXPECT_EQ(noted(), kInterrupted);
  EXPECT_FALSE(onMainThread[1]);
  EXPECT_TRUE(runUntilGone(pid));
  EXPECT_TRUE(runUntil([this] { return process() == 0; }));
}

TEST_F(MisbehavingExtension, ThatCrashesIsInterrupted) { EXPECT_EQ(after(@"crash", 2), kInterrupted); }

TEST_F(MisbehavingExtension, ThatExitsIsInterrupted) { EXPECT_EQ(after(@"exit", 2), kInterrupted); }

TEST_F(MisbehavingExtension, ThatDiesBeforeItHearsOfTheRequestCannotBeShown) {
  askWith(@[], @"stillborn");
  ASSERT_TRUE(runUntilNoted(1));
  runForAWhile();
  EXPECT_EQ(noted(), Notes{"failed NSCocoaErrorDomain 4097"});
  EXPECT_EQ(reason, "The connection to the extension was interrupted: its process ended with status 3.");
  EXPECT_FALSE(onMainThread[0]);
}

TEST_F(MisbehavingExtension, ThatDiesAtOnceIsHeardOfAfterTheTurnOfTheMainThreadThatAskedForIt) {
  askWith(@[], @"stillborn");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  EXPECT_EQ(noted(), Notes{});
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_EQ(noted(), Notes{"failed NSCocoaErrorDomain 4097"});
}

TEST_F(MisbehavingExtension, ThatDiesWhileItMakesItsViewCannotBeShown) {
  EXPECT_EQ(after(@"crash while loading", 1), Notes{"failed NSCocoaErrorDomain 4097"});
  EXPECT_EQ(reason, "The connection to the extension was interrupted: its process ended by signal 6 (Aborted).");
}

TEST_F(MisbehavingExtension, ThatKnowsNothingOfTheDeviceIsConfinedToItsContainerAllTheSame) {
  askWith(@[], @"intruder");
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_EQ(reason, "The connection to the extension was interrupted: its process ended with status 1.");
}

TEST_F(MisbehavingExtension, ThatHasNoPrincipalClassCannotBeShown) {
  askWith(@[], @"classless");
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_EQ(noted(), Notes{"failed NSExtensionErrorDomain 2"});
  EXPECT_EQ(reason, "The extension com.example.trial.classless cannot be shown: its principal class "
                    "NobodyKnowsThisClass is no view controller.");
}

TEST_F(MisbehavingExtension, ThatMakesNoViewControllerCannotBeShown) {
  askWith(@[], @"viewless");
  ASSERT_TRUE(runUntilNoted(1));
  EXPECT_EQ(noted(), Notes{"failed NSExtensionErrorDomain 2"});
  EXPECT_FALSE(onMainThread[0]);
}

TEST_F(MisbehavingExtension, ThatAnswersTwiceHasItsFirstAnswerTaken) {
  EXPECT_EQ(after(@"complete twice", 2), (Notes{"shown", "completed"}));
  EXPECT_EQ(text([[[returnedItems objectAtIndex:0] userInfo] objectForKey:@"result"]), "FALSE");
  EXPECT_TRUE(isThere(process()));
}

TEST_F(MisbehavingExtension, ThatCancelsAfterItsAnswerHasNotCancelled) {
  EXPECT_EQ(after(@"complete and cancel", 2), (Notes{"shown", "completed"}));
}

TEST_F(MisbehavingExtension, ThatDiesAfterItsAnswerHasAnswered) {
  EXPECT_EQ(after(@"complete and crash", 2), (Notes{"shown", "completed"}));
}

TEST_F(MisbehavingExtension, ThatTalksNonsenseAfterItsAnswerHasAnswered) {
  EXPECT_EQ(after(@"complete and talk nonsense", 2), (Notes{"shown", "completed"}));
}

TEST_F(MisbehavingExtension, ThatHangsGoesWithItsHost) {
  EXPECT_EQ(after(@"hang", 1), Notes{"shown"});
  const int pid = process();
  EXPECT_TRUE(isThere(pid));
  drop();
  EXPECT_TRUE(runUntilGone(pid));
}

TEST_F(MisbehavingExtension, OfWhichNoThreadRunsGoesWithItsHost) {
  ask(@"wait");
  ASSERT_TRUE(runUntilNoted(1));
  const int pid = process();
  ASSERT_EQ(::kill(pid, SIGSTOP), 0);
  drop();
  EXPECT_TRUE(runUntilGone(pid));
}

TEST_F(MisbehavingExtension, ThatHangsBeforeItIsShownGoesWithItsHost) {
  ask(@"hang while loading");
  // No request is known yet by which to ask for the process.
  ASSERT_TRUE(runUntil([] { return support::processesOf("Behaving").size() == 1; }));
  const int pid = support::processesOf("Behaving").front();
  runForAWhile();
  EXPECT_EQ(noted(), Notes{});
  EXPECT_TRUE(isThere(pid));
  [extension release];
  extension = nil;
  EXPECT_TRUE(runUntilGone(pid));
  EXPECT_EQ(noted(), Notes{});
}

TEST_F(MisbehavingExtension, ThatSendsNoArchiveIsInterrupted) {
  EXPECT_EQ(after(@"send no archive", 2), kInterrupted);
  EXPECT_TRUE(runUntil([this] { return process() == 0; }));
}

TEST_F(MisbehavingExtension, ThatAnnouncesAnEndlessMessageIsInterrupted) {
  EXPECT_EQ(after(@"send an endless length", 2), kInterrupted);
}

TEST_F(MisbehavingExtension, ThatEndsInTheMiddleOfAMessageIsInterrupted) {
  EXPECT_EQ(after(@"send half a message", 2), kInterrupted);
}

TEST_F(MisbehavingExtension, ThatAnswersWithOtherObjectsThanItemsIsInterrupted) {
  EXPECT_EQ(after(@"complete with texts", 2), kInterrupted);
}

TEST_F(MisbehavingExtension, ThatAnswersWithInformationThatIsNoDictionaryIsInterrupted) {
  EXPECT_EQ(after(@"complete with a text for information", 2), kInterrupted);
}

TEST_F(MisbehavingExtension, ThatAnswersWithAClassOfItsOwnIsInterrupted) {
  EXPECT_EQ(after(@"complete with a stranger", 2), kInterrupted);
}

} // namespace
