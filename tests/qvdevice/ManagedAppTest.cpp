// An app while its administrator has things changed: what it hears, what the library logs, what the SDK is told.
#include "Transcript.h"

#include <gtest/gtest.h>

namespace {

TEST(ManagedApp, HearsOfReadinessConfigurationAndEachPolicy) {
  EXPECT_EQ(from("event", transcriptOf({.app = "EveryMethod",
                                        .policies = R"({"config": {"server": "one.example.com"}})",
                                        .events = R"(set ready true
set config {"server": "two.example.com"}
set config {"port": 25, "QV_ZB_WR_ALLOW_KEYBOARD_DICTATION": true}
set config {"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION": true}
set authState 1 "Welcome."
set managedPolicy 2
set openInPolicy 1
set openInPolicy 2
set openInWhitelist ["com.example.mail"]
set openInPolicy 9
set pasteboardPolicy 1
set pasteboardPolicy 2
set pasteboardPolicy 9
set pasteboardPolicy 0
set printPolicy 1
set printPolicy 1
set printPolicy 0
set authState 7 "Odd."
set authState 1
set managedPolicy 0
)"})),
            R"(event set values={"ready":true}
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelConfigIs server=one.example.com
sdk configApplied:message: message=nil result=1
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
event set values={"config":{"server":"two.example.com"}}
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelConfigChangedTo server=two.example.com
app zorbelConfigIs server=two.example.com
sdk configApplied:message: message=nil result=1
event set values={"config":{"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION":true,"port":25}}
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelConfigChangedTo port=25
app zorbelConfigIs port=25
sdk configApplied:message: message=There is no server. result=2
event set values={"config":{"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION":true}}
event set message=Welcome. values={"authState":1}
log 3 Auth state changed: Authorized
sdk authStateApplied:message: message=Welcome. result=1
event set values={"managedPolicy":2}
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 1
event set values={"openInPolicy":1}
log 3 open-in policy changed to 'Authorized'
sdk openInPolicyApplied:message: message=nil result=1
event set values={"openInPolicy":2}
log 3 open-in policy changed to 'Whitelist'
sdk openInPolicyApplied:message: message=nil result=1
event set values={"openInWhitelist":["com.example.mail"]}
log 3 open-in policy changed to 'Whitelist'
sdk openInPolicyApplied:message: message=nil result=1
event set values={"openInPolicy":9}
log 3 open-in policy changed to 'Unknown OpenIn State'
sdk openInPolicyApplied:message: message=nil result=1
event set values={"pasteboardPolicy":1}
log 3 pasteboard policy changed to 'Authorized'
sdk pasteboardPolicyApplied:message: message=nil result=1
event set values={"pasteboardPolicy":2}
log 3 pasteboard policy changed to 'Secure Copy'
sdk pasteboardPolicyApplied:message: message=nil result=1
event set values={"pasteboardPolicy":9}
log 3 pasteboard policy changed to 'Unknown Pasteboard State'
sdk pasteboardPolicyApplied:message: message=nil result=1
event set values={"pasteboardPolicy":0}
log 3 pasteboard policy changed to 'Unauthorized'
sdk pasteboardPolicyApplied:message: message=nil result=1
event set values={"printPolicy":1}
log 3 print policy changed to 'Authorized'
sdk printPolicyApplied:message: message=nil result=1
event set values={"printPolicy":1}
event set values={"printPolicy":0}
log 3 print policy changed to 'Unauthorized'
sdk printPolicyApplied:message: message=nil result=1
event set message=Odd. values={"authState":7}
log 3 Auth state changed: Unknown Auth State
log 3 Ignoring state change... (7)
sdk authStateApplied:message: message=Odd. result=0
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
event set values={"authState":1}
log 3 Auth state changed: Authorized
sdk authStateApplied:message: message=nil result=1
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 1
event set values={"managedPolicy":0}
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod was told to end and did, with status 0
)");
}

TEST(ManagedApp, EndsWhenItIsNoLongerAuthorised) {
  EXPECT_EQ(
      from("event",
           transcriptOf(
               {.app = "EveryMethod",
                .policies =
                    R"({"ready": true, "authState": 1, "managedPolicy": 2, "config": {"server": "one.example.com"}})",
                .events = "set authState 0 \"Go away.\"\nends\n"})),
      R"(event set message=Go away. values={"authState":0}
log 3 Auth state changed: Unauthorized
log 2 App is not authorized. Message: 'Go away.'
sdk authStateApplied:message: message=Go away. result=1
sdk displayMessage: message=Go away.
log 2 App is not authorized so shutting down.
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
log 2 exiting application
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod ended by itself in good order, with status 0
)");
}

TEST(ManagedApp, EndsWithoutTheApplicationsHelpWhereThatKnowsNoWay) {
  EXPECT_EQ(
      from("event",
           transcriptOf(
               {.app = "EveryMethod",
                .policies =
                    R"({"ready": true, "authState": 1, "managedPolicy": 2, "config": {"server": "one.example.com"}})",
                .events = "set authState 0 \"Go away.\"\nends\n",
                .options = {"--without-terminate-with-success"}})),
      R"(event set message=Go away. values={"authState":0}
log 3 Auth state changed: Unauthorized
log 2 App is not authorized. Message: 'Go away.'
sdk authStateApplied:message: message=Go away. result=1
sdk displayMessage: message=Go away.
log 2 App is not authorized so shutting down.
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
log 2 exiting application
log 3 -[QVZorbelDelegate applicationWillTerminate]
sdk willExit
end 0 EveryMethod ended by itself in good order, with status 0
)");
}

TEST(ManagedApp, EndsOnAnOldSystemWhileTheMainThreadGoesOn) {
  const std::string transcript =
      from("log 2 App is not authorized so shutting down.",
           transcriptOf({.app = "EveryMethod",
                         .events = "set authState 0 \"Go away.\"\nends\n",
                         .options = {"--without-terminate-with-success", "--system-version", "5.1"}}));
  // What the main thread says meanwhile may stand anywhere between these, or not be said any more.
  std::size_t place = 0;
  for (const char* line : {"log 2 exiting application\n", "log 3 -[QVZorbelDelegate applicationWillTerminate]\n",
                           "sdk willExit\n", "end 0 EveryMethod ended by itself in good order, with status 0\n"}) {
    place = transcript.find(line, place);
    ASSERT_NE(place, std::string::npos) << line << "is not where it should be in\n" << transcript;
  }
  EXPECT_EQ(transcript.find("device willTerminate"), std::string::npos) << transcript;
}

TEST(ManagedApp, GoesOnUnauthorisedWhileCheckInIsRequested) {
  EXPECT_EQ(
      from(
          "event",
          transcriptOf(
              {.app = "EveryMethod",
               .policies =
                   R"({"ready": true, "checkInRequested": true, "authState": 1, "managedPolicy": 2, "config": {"server": "one.example.com"}})",
               .events = R"(set authState 0 "Check in."
resign
activate
set authState 1
set checkInRequested false
set authState 0
ends
)"})),
      R"(event set message=Check in. values={"authState":0}
log 3 Auth state changed: Unauthorized
log 2 App is not authorized. Message: 'Check in.'
sdk authStateApplied:message: message=Check in. result=1
log 2 App is not authorized but check-in is requested hence not aborting the process.
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event activate
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
event set values={"authState":1}
log 3 Auth state changed: Authorized
sdk authStateApplied:message: message=nil result=1
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 1
event set values={"checkInRequested":false}
event set values={"authState":0}
log 3 Auth state changed: Unauthorized
log 2 App is not authorized. Message: '(null)'
sdk authStateApplied:message: message=nil result=1
sdk displayMessage: message=nil
log 2 App is not authorized so shutting down.
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
log 2 exiting application
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod ended by itself in good order, with status 0
)");
}

TEST(ManagedApp, EndsAtItsLaunchWhenItIsNotAuthorised) {
  EXPECT_EQ(from("device didBecomeActive", transcriptOf({.app = "EveryMethod",
                                                         .policies = R"({"ready": true, "readyToTerminate": true})",
                                                         .events = "ends\n"})),
            R"(device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelConfigIs none
sdk configApplied:message: message=There is no server. result=2
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <EveryMethodDelegate>
app zorbelStateChangedTo 0
log 2 exiting application
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod ended by itself in good order, with status 0
)");
}

TEST(ManagedApp, EndsWhenItIsUsedAgainAndNotAuthorised) {
  EXPECT_EQ(from("event", transcriptOf({.app = "EveryMethod",
                                        .policies = R"({"ready": true})",
                                        .events = "resign\nset readyToTerminate true\nactivate\nends\n"})),
            R"(event resign
device willResignActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
app willResignActive
log 3 -[QVZorbelDelegate applicationWillResignActive]
event set values={"readyToTerminate":true}
event activate
device didBecomeActive
log 3 -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
app didBecomeActive
log 3 -[QVZorbelDelegate applicationDidBecomeActive]
log 2 exiting application
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
app willTerminate
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 EveryMethod ended by itself in good order, with status 0
)");
}

TEST(ManagedApp, RefusesDictationUnlessItsConfigurationAllowsIt) {
  EXPECT_EQ(from("event", transcriptOf({.app = "Form",
                                        .events = "type Ann\nperform nextField:\ndictate Hello there\ntap Send\n"})),
            R"(event type text=Ann
app to is "A"
app to is "An"
app to is "Ann"
event perform action=nextField:
app no longer editing to
app editing message
event dictate text=Hello there
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FormDelegate>
log 3 -[ZBWrappedApplicationDelegate zb_window]
app no longer editing message
log 2 Attempting to start Dictation. Dismissing the keyboard.
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FormDelegate>
log 3 -[ZBWrappedApplicationDelegate zb_window]
end 1 Form (line 3 of the events) refused "dictate": dictation was dismissed
)");
}

TEST(ManagedApp, TakesDictationWhenItsConfigurationAllowsIt) {
  EXPECT_EQ(from("event",
                 transcriptOf({.app = "Form",
                               .policies = R"({"ready": true, "config": {"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION": "YES"}})",
                               .events = "type Ann\nperform nextField:\ndictate Hello there\ntap Send\n"})),
            R"(event type text=Ann
app to is "A"
app to is "An"
app to is "Ann"
event perform action=nextField:
app no longer editing to
app editing message
event dictate text=Hello there
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FormDelegate>
log 3 -[ZBWrappedApplicationDelegate zb_window]
app message is "Hello there"
event tap title=Send
sdk sendEvent: event=UIEvent
sdk sendEvent: event=UIEvent
app sending "Hello there" to "Ann"
log 0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <FormDelegate>
log 3 -[ZBWrappedApplicationDelegate zb_window]
app no longer editing message
event terminate
device willTerminate
log 3 -[ZBWrappedApplicationDelegate zb_applicationWillTerminate:]
log 3 -[QVZorbelDelegate applicationWillTerminate]
end 0 Form was told to end and did, with status 0
)");
}

} // namespace
