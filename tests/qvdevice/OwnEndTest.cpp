// Apps that end by themselves, in good order or not.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

const std::string kEnd = "[[UIApplication sharedApplication] performSelector:@selector(terminateWithSuccess)";
const std::string kGoodOrder = "Own ended by itself in good order, with status 0";

/// The status and the sentence of a run of an app with this launch under these events.
class Played {
public:
  Played(const std::string& launch, const std::string& events, std::vector<std::string> options = {}) {
    std::vector<std::string> arguments{"run", "--json"};
    if (!events.empty()) {
      arguments.insert(arguments.end(), {"--events", folder_.write("events", events)});
    }
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.push_back(folder_.app("Own", appSource(launch)));
    const Ended ended = qvdevice(arguments);
    status = ended.status;
    const auto ends = objectsOf(ended.out, "end");
    EXPECT_EQ(ends.size(), 1u) << ended.out << ended.err;
    sentence = ends.empty() ? "" : ends[0].value("sentence", "");
  }

  int status = -1;
  std::string sentence;

private:
  WorkFolder folder_;
};

TEST(OwnEnd, inGoodOrderIsDoneWhenNoEventsAreAskedFor) {
  const Played run(kEnd + " withObject:nil afterDelay:0.01];", "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.sentence, kGoodOrder);
}

TEST(OwnEnd, beforeTheAppIsActiveIsDoneToo) {
  const Played run(kEnd + "];", "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.sentence, kGoodOrder);
}

TEST(OwnEnd, whichTheSdkWasToldOfIsInGoodOrder) {
  const std::string told = "[[NSClassFromString(@\"Zorbel\") performSelector:@selector(sharedInstance)] "
                           "performSelector:@selector(willExit)]; ";
  const Played zero(told + "exit(0);", "");
  EXPECT_EQ(zero.status, 0);
  EXPECT_EQ(zero.sentence, kGoodOrder);
  const Played three(told + "exit(3);", "");
  EXPECT_EQ(three.status, 1);
  EXPECT_EQ(three.sentence, "Own ended by itself with status 3, which a real app does not");
}

TEST(OwnEnd, thatLeavesEventsUndoneFailsWithTheFirstOfThem) {
  const Played run(kEnd + " withObject:nil afterDelay:0.01];", "# a\nresign\nbackground\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.sentence, "Own ended by itself in good order, but before line 2 of the events (\"resign\") was done");
}

TEST(OwnEnd, thatLeavesOnlyTheEndOfTheFileUndoneIsDone) {
  const Played run(kEnd + " withObject:nil afterDelay:2.5];", "wait 20000\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.sentence, kGoodOrder);
}

TEST(OwnEnd, beforeATerminateOfTheFileFails) {
  const Played run(kEnd + " withObject:nil afterDelay:2.5];", "wait 20000\nterminate\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.sentence,
            "Own ended by itself in good order, but before line 2 of the events (\"terminate\") was done");
}

TEST(OwnEnd, thatIsDemandedIsWaitedFor) {
  const Played run(kEnd + " withObject:nil afterDelay:1.0];", "ends\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.sentence, kGoodOrder);
}

TEST(OwnEnd, thatIsDemandedMayHaveComeAlready) {
  const Played run(kEnd + " withObject:nil afterDelay:0.01];", "ends\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.sentence, kGoodOrder);
}

TEST(OwnEnd, thatIsDemandedOfAnAppThatLivesOnFailsWhenTheTimeIsUp) {
  const Played run("", "resign\nends\n", {"--timeout", "1"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.sentence, "Own (line 2 of the events) did not end by itself in 1 second and was ended");
}

TEST(OwnEnd, thatIsDemandedMustBeInGoodOrder) {
  const Played run("dispatch_async(dispatch_get_main_queue(), ^{ exit(0); });", "ends\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.sentence, "Own ended by itself with status 0, which a real app does not");
}

/// An app that ends in the middle of an event, without an answer to it.
const std::string kEndsWhenItResigns =
    "[[NSNotificationCenter defaultCenter] addObserver:[UIApplication sharedApplication] "
    "selector:@selector(terminateWithSuccess) name:UIApplicationWillResignActiveNotification object:nil];";

TEST(OwnEnd, inTheMiddleOfAnEventFailsUnlessItIsDemanded) {
  const Played asked(kEndsWhenItResigns, "resign\nends\n");
  EXPECT_EQ(asked.status, 0);
  EXPECT_EQ(asked.sentence, kGoodOrder);
  const Played unasked(kEndsWhenItResigns, "resign\n");
  EXPECT_EQ(unasked.status, 1);
  EXPECT_EQ(unasked.sentence,
            "Own ended by itself in good order, but before line 1 of the events (\"resign\") was done");
}

} // namespace
