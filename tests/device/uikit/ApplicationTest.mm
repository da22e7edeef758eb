// UIApplicationMain never returns: these tests run a small app in a process of its own and watch it from outside.

#include "RunningApp.h"

namespace {

class Lifecycle : public RunningApp {
public:
  explicit Lifecycle(std::vector<std::string> environment = {}) : RunningApp(LIFECYCLE_APP, std::move(environment)) {}
};

const std::string active = "UIApplicationDidBecomeActiveNotification [active]";
TEST(Application, ALaunchTellsTheDelegateAndThenTheObserversStepByStep) {
  Lifecycle app;
  EXPECT_EQ(app.until(active),
            (Lines{"willFinishLaunching [inactive]", "didFinishLaunching [inactive]",
                   "UIApplicationDidFinishLaunchingNotification [inactive]", "applicationDidBecomeActive [active]",
                   "UIApplicationDidBecomeActiveNotification [active]"}));
  EXPECT_EQ(app.events(), (Lines{"willFinishLaunching", "didFinishLaunching", "didBecomeActive"}));
}

TEST(Application, ItGoesToTheBackgroundThroughInactiveAndComesBackActive) {
  Lifecycle app;
  app.until(active);
  EXPECT_EQ(app.command("enterBackground"), ok);
  EXPECT_EQ(app.until("UIApplicationDidEnterBackgroundNotification [background]"),
            (Lines{"applicationWillResignActive [active]", "UIApplicationWillResignActiveNotification [active]",
                   "applicationDidEnterBackground [background]",
                   "UIApplicationDidEnterBackgroundNotification [background]"}));
  EXPECT_EQ(app.command("enterForeground"), ok);
  EXPECT_EQ(
      app.until(active),
      (Lines{"applicationWillEnterForeground [background]", "UIApplicationWillEnterForegroundNotification [background]",
             "applicationDidBecomeActive [active]", "UIApplicationDidBecomeActiveNotification [active]"}));
}

TEST(Application, ItResignsAndBecomesActiveAgain) {
  Lifecycle app;
  app.until(active);
  EXPECT_EQ(app.command("resignActive"), ok);
  EXPECT_EQ(app.command("becomeActive"), ok);
  EXPECT_EQ(app.until(active),
            (Lines{"applicationWillResignActive [active]", "UIApplicationWillResignActiveNotification [active]",
                   "applicationDidBecomeActive [active]", "UIApplicationDidBecomeActiveNotification [active]"}));
}

TEST(Application, StepsThatItsStateDoesNotAllowAreRefusedWithAReason) {
  Lifecycle app;
  app.until(active);
  EXPECT_EQ(app.command("enterForeground"), refusal("the app is not in the background"));
  EXPECT_EQ(app.command("becomeActive"), ok) << "it is active already";
  EXPECT_EQ(app.command("enterBackground"), ok);
  EXPECT_EQ(app.command("enterBackground"), refusal("the app is in the background already"));
  EXPECT_EQ(app.command("becomeActive"), refusal("the app is in the background"));
  EXPECT_EQ(app.command("resignActive"), refusal("the app is not active"));
}

TEST(Application, ToldToTerminateItSaysSoAndExitsWithSuccess) {
  Lifecycle app;
  app.until(active);
  EXPECT_EQ(app.command("terminate"), ok);
  EXPECT_EQ(app.rest(),
            (Lines{"applicationWillTerminate [active]", "UIApplicationWillTerminateNotification [active]"}));
  const int status = app.end();
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(app.events().back(), "willTerminate");
}

TEST(Application, ItsPrivateTerminationEndsItTheSameWay) {
  Lifecycle app({"LIFECYCLE_DO=terminate"});
  EXPECT_EQ(app.rest().back(), "UIApplicationWillTerminateNotification [active]");
  const int status = app.end();
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(Application, ItsPrivateTerminationEndsItFromAnotherThreadToo) {
  Lifecycle app({"LIFECYCLE_DO=terminate elsewhere", R"(QVDEVICE_SETTINGS={"systemVersion":"5.1.1"})"});
  app.until(active);
  EXPECT_EQ(app.rest(),
            (Lines{"applicationWillTerminate [active]", "UIApplicationWillTerminateNotification [active]"}));
  const int status = app.end();
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(app.events().back(), "willTerminate");
}

TEST(Application, LeftAloneItGoesOnWithoutUsingTheProcessor) {
  Lifecycle app;
  app.until(active);
  const long before = app.processorTicks();
  usleep(500'000);
  EXPECT_LE(app.processorTicks() - before, 5) << "hundredths of a second of half a second";
  EXPECT_EQ(app.command("resignActive"), ok) << "still there, and answering";
}

TEST(Application, ARepeatingTimerFiresUntilItIsInvalidated) {
  Lifecycle app({"LIFECYCLE_DO=timer"});
  app.until(active);
  usleep(200'000);
  EXPECT_EQ(app.command("terminate"), ok);
  const Lines said = app.rest();
  EXPECT_EQ(std::count(said.begin(), said.end(), "tick [active]"), 3);
}

TEST(Application, AnExceptionThatNobodyCatchesIsToldAndAborts) {
  for (const char *when : {"LIFECYCLE_DO=raise", "LIFECYCLE_DO=raise later"}) {
    Lifecycle app({when});
    const std::string reason = std::string(when) == "LIFECYCLE_DO=raise" ? "asked to raise" : "asked to raise later";
    EXPECT_EQ(app.rest().back(),
              "*** Terminating app due to uncaught exception 'LifecycleException', reason: '" + reason + "'");
    const int status = app.end();
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGABRT);
  }
}

TEST(Application, ADelegateClassThatNobodyKnowsAborts) {
  Lifecycle app({"LIFECYCLE_CLASS=NoSuchDelegate"});
  EXPECT_EQ(app.rest(),
            Lines{"*** Terminating app due to uncaught exception 'NSInternalInconsistencyException', reason: "
                  "'Unable to instantiate the UIApplication delegate instance. No class named "
                  "NoSuchDelegate is loaded.'"});
  EXPECT_TRUE(WIFSIGNALED(app.end()));
}

TEST(Application, APrincipalClassThatIsNoApplicationAborts) {
  Lifecycle app({"LIFECYCLE_PRINCIPAL=UIView"});
  EXPECT_EQ(app.rest(),
            Lines{"*** Terminating app due to uncaught exception 'NSInternalInconsistencyException', reason: "
                  "'Unable to instantiate the UIApplication subclass instance. UIView is not a "
                  "UIApplication.'"});
  EXPECT_TRUE(WIFSIGNALED(app.end()));
}

TEST(Application, TheDefaultProtectionClassOfTheDeviceIsWhatItsSettingsSay) {
  const struct {
    const char *setting;
    const char *answer;
  } cases[] = {{"NSFileProtectionComplete", "protection: NSFileProtectionComplete, 14 attributes [inactive]"},
               {"NSFileProtectionNone", "protection: NSFileProtectionNone, 14 attributes [inactive]"},
               {"absent", "protection: (none), 13 attributes [inactive]"}};
  for (const auto &each : cases) {
    Lifecycle app(
        {"LIFECYCLE_DO=protection", std::string("QVDEVICE_SETTINGS={\"defaultProtection\":\"") + each.setting + "\"}"});
    const Lines said = app.until(active);
    EXPECT_EQ(said.at(2), each.answer);
  }
}

TEST(Application, EveryChangeOfAStoredClassIsTracedOnceAndNothingElse) {
  Lifecycle app({"LIFECYCLE_DO=protection"});
  app.until(active);
  EXPECT_EQ(app.protections(), (Lines{"tmp/file null -> \"NSFileProtectionComplete\"",
                                      "tmp/file \"NSFileProtectionComplete\" -> \"NSFileProtectionNone\"",
                                      "tmp/other null -> \"NSFileProtectionNone\""}));
}

TEST(Application, APadSaysThatItIsOne) {
  Lifecycle app({"LIFECYCLE_DO=device", "QVDEVICE_SETTINGS={\"idiom\":\"pad\",\"systemVersion\":\"11.4\"}"});
  EXPECT_EQ(app.until(active).at(2), "iPad iOS 11.4, idiom 1, screen 820 x 1180 [inactive]");
}

TEST(Application, ADeviceMayHaveASystemOlderThanMost) {
  Lifecycle app({"LIFECYCLE_DO=device", R"(QVDEVICE_SETTINGS={"systemVersion":"5.1.1"})"});
  EXPECT_EQ(app.until(active).at(2), "iPhone iOS 5.1.1, idiom 0, screen 390 x 844 [inactive]");
}

TEST(Application, APrincipalClassOfTheAppsOwnIsTaken) {
  Lifecycle app({"LIFECYCLE_PRINCIPAL=OwnApplication"});
  EXPECT_EQ(app.until(active).front(), "willFinishLaunching [inactive]");
}

TEST(Application, WithoutADelegateClassItLaunchesAndTellsTheObserversAlone) {
  Lifecycle app({"LIFECYCLE_CLASS="});
  EXPECT_EQ(app.until(active), (Lines{"UIApplicationDidFinishLaunchingNotification [inactive]", active}));
}

TEST(Application, ADelegateWithTheOldLaunchMethodAloneIsToldByThat) {
  Lifecycle app({"LIFECYCLE_CLASS=OldDelegate"});
  EXPECT_EQ(app.until(active).front(), "applicationDidFinishLaunching [inactive]");
  EXPECT_TRUE(WIFEXITED(app.end()));
}

} // namespace
