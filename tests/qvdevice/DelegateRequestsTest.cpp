// What an app is given that asks for its delegate, or replaces it, while the SDK has a proxy there or not.
#include "Transcript.h"

#include <gtest/gtest.h>

namespace {

TEST(DelegateRequest, StaysTheApplicationsDelegateWhenItIsReplacedAfterTheLaunch) {
  EXPECT_EQ(from("device didBecomeActive",
                 transcriptOf({.app = "Replacing",
                               .policies = R"({"ready": true})",
                               .events = "set config {\"server\": \"one.example.com\"}\nresign\n"})),
            R"(device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app first: didBecomeActive
log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <SecondDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
app first: the delegate is FirstDelegate
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
event set values={"config":{"server":"one.example.com"}}
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
app first: zorbelConfigChangedTo server=one.example.com
sdk configApplied:message: message=nil result=1
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
app first: willResignActive; the delegate is FirstDelegate
log 3 -[QVZorbelDelegate applicationWillResignActive]
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app first: willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Replacing was told to end and did, with status 0
)");
}

TEST(DelegateRequest, IsSeenAsReplacedByTheHostAloneUnderTheSDKsProxy) {
  EXPECT_EQ(from("sdk startWithLaunchOptions:",
                 transcriptOf({.app = "Replacing",
                               .policies = R"({"ready": true, "delegateProxy": true})",
                               .events = "set config {\"server\": \"one.example.com\"}\nresign\n"})),
            R"(sdk startWithLaunchOptions: launchOptions=nil
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <FirstDelegate>
app first: didFinishLaunching
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app first: didBecomeActive
log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <SecondDelegate>
log 3 -[UIApplication(Sandbox) sb_delegate] Returning original delegate <SecondDelegate>
app first: the delegate is SecondDelegate
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
event set values={"config":{"server":"one.example.com"}}
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FirstDelegate>
app first: zorbelConfigChangedTo server=one.example.com
sdk configApplied:message: message=nil result=1
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
log 3 -[UIApplication(Sandbox) sb_delegate] Returning original delegate <SecondDelegate>
app first: willResignActive; the delegate is SecondDelegate
log 3 -[QVZorbelDelegate applicationWillResignActive]
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app first: willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Replacing was told to end and did, with status 0
)");
}

TEST(DelegateRequest, IsTheSameForTheHostsCodeAndItsLibrary) {
  EXPECT_EQ(from("sdk startWithLaunchOptions:",
                 transcriptOf({.app = "Asking", .policies = R"({"ready": true})", .events = "resign\n"})),
            R"(sdk startWithLaunchOptions: launchOptions=nil
app didFinishLaunching
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
app the app's own code is given a AskingDelegate
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
app the app's library is given a AskingDelegate
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
app the app's own code is given a AskingDelegate
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
app the app's library is given a AskingDelegate
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Asking was told to end and did, with status 0
)");
}

TEST(DelegateRequest, IsTheHostsOwnForTheHostsCodeAndTheSDKsProxyForItsLibrary) {
  EXPECT_EQ(from("sdk startWithLaunchOptions:",
                 transcriptOf(
                     {.app = "Asking", .policies = R"({"ready": true, "delegateProxy": true})", .events = "resign\n"})),
            R"(sdk startWithLaunchOptions: launchOptions=nil
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
log 3 -[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <AskingDelegate>
app didFinishLaunching
log 3 -[UIApplication(Sandbox) sb_delegate] Returning original delegate <AskingDelegate>
app the app's own code is given a AskingDelegate
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
app the app's library is given a ZBAppDelegateProxy
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[UIApplication(Sandbox) sb_delegate] Returning original delegate <AskingDelegate>
app the app's own code is given a AskingDelegate
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
app the app's library is given a ZBAppDelegateProxy
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <AskingDelegate>
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Asking was told to end and did, with status 0
)");
}

} // namespace
