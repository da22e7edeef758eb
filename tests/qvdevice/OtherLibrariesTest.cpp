// Apps that carry another library, which is after the same methods.
#include "Transcript.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "Program.h"

namespace {

/// What the app and its library said after the delegate was set.
std::vector<std::string> saidIn(const std::string& transcript) {
  std::vector<std::string> said;
  for (const std::string& line : linesOf(transcript)) {
    if (line.starts_with("app ") && line.find("setDelegate:") == std::string::npos &&
        line.find(": loaded") == std::string::npos) {
      said.push_back(line);
    }
  }
  return said;
}

TEST(OtherLibrary, ThatCameBeforeHearsOfEverythingAndSoDoOurs) {
  EXPECT_EQ(transcriptOf({.app = "Watched", .events = "touch\nresign\nbackground\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <WatchedDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
app watcher: setDelegate: WatchedDelegate
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
app app: didFinishLaunching
device didBecomeActive
app watcher: didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app app: didBecomeActive
log 3 -[UIApplication(Sandbox) sb_openURL:]
app watcher: openURL: https://www.example.com/used
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
event touch
app app: sendEvent:
sdk sendEvent: event=UIEvent
app watcher: sendEvent:
app app: sendEvent:
sdk sendEvent: event=UIEvent
app watcher: sendEvent:
event resign
device willResignActive
app watcher: willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app app: willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event background
device didEnterBackground
app watcher: didEnterBackground
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Watched was told to end and did, with status 0
)");
}

TEST(OtherLibrary, ThatCameAfterHearsOfEverythingAndSoDoOurs) {
  EXPECT_EQ(transcriptOf({.app = "WatchedLater", .events = "touch\nresign\nbackground\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <WatchedDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
app app: didFinishLaunching
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app watcher: didBecomeActive
app app: didBecomeActive
app watcher: openURL: https://www.example.com/used
log 3 -[UIApplication(Sandbox) sb_openURL:]
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
event touch
app app: sendEvent:
app watcher: sendEvent:
sdk sendEvent: event=UIEvent
app app: sendEvent:
app watcher: sendEvent:
sdk sendEvent: event=UIEvent
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app watcher: willResignActive
app app: willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event background
device didEnterBackground
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
app watcher: didEnterBackground
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 WatchedLater was told to end and did, with status 0
)");
}

TEST(OtherLibrary, ThatCameBeforeAndSubclassesTheDelegateHearsOfEverythingAndSoDoOurs) {
  EXPECT_EQ(transcriptOf({.app = "Subclassed", .events = "touch\nresign\nbackground\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <WatchedDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
app subclasser: setDelegate: WatchedDelegate
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
app app: didFinishLaunching
device didBecomeActive
app subclasser: didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app app: didBecomeActive
log 3 -[UIApplication(Sandbox) sb_openURL:]
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
event touch
app app: sendEvent:
sdk sendEvent: event=UIEvent
app app: sendEvent:
sdk sendEvent: event=UIEvent
event resign
device willResignActive
app subclasser: willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app app: willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event background
device didEnterBackground
app subclasser: didEnterBackground
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Subclassed was told to end and did, with status 0
)");
}

TEST(OtherLibrary, ThatCameAfterAndSubclassesTheDelegateHearsOfEverythingAndSoDoOurs) {
  EXPECT_EQ(transcriptOf({.app = "SubclassedLater", .events = "touch\nresign\nbackground\n"}),
            R"(log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <WatchedDelegate>
log 0 Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:
device willFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:willFinishLaunchingWithOptions:]
device didFinishLaunching
log 3 -[ZBWrappedApplicationDelegate zb_application:didFinishLaunchingWithOptions:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 3 -[QVZorbelDelegate applicationDidFinishLaunchingWithOptions:]
sdk setZorbelDelegate: delegate=QVZorbelDelegate
sdk startWithLaunchOptions: launchOptions=nil
app app: didFinishLaunching
device didBecomeActive
app subclasser: didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app app: didBecomeActive
log 3 -[UIApplication(Sandbox) sb_openURL:]
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <WatchedDelegate>
event touch
app app: sendEvent:
sdk sendEvent: event=UIEvent
app app: sendEvent:
sdk sendEvent: event=UIEvent
event resign
device willResignActive
app subclasser: willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app app: willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event background
device didEnterBackground
app subclasser: didEnterBackground
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
log 3 (-[QVZorbelDelegate applicationDidEnterBackground]) 
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 SubclassedLater was told to end and did, with status 0
)");
}

TEST(OtherLibrary, SaysTheSameWithOursAndWithout) {
  for (const char* app : {"Watched", "WatchedLater", "Subclassed", "SubclassedLater"}) {
    const AppRun run{.app = app, .events = "touch\nresign\nbackground\nforeground\n"};
    AppRun without = run;
    without.options = {"--no-library"};
    std::vector<std::string> saidWith = saidIn(transcriptOf(run));
    std::vector<std::string> saidWithout = saidIn(transcriptOf(without));
    EXPECT_GT(saidWithout.size(), 9u) << app;
    // Who of two libraries hears of it first depends on which came first.
    std::ranges::sort(saidWith);
    std::ranges::sort(saidWithout);
    EXPECT_EQ(saidWith, saidWithout) << app;
  }
}

} // namespace
