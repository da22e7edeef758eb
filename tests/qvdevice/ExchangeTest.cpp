// The SDK wants the user's passcode of an app that runs under the library, and gets the answer of an installed app's
// extension, which runs in a process of its own.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// A window with a text field.
const std::string kHost = R"(
  UIWindow *window = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
  UIViewController *root = [[[UIViewController alloc] init] autorelease];
  [root setTitle:@"Host"];
  [[root view] addSubview:[[[UITextField alloc] initWithFrame:CGRectMake(0, 0, 100, 40)] autorelease]];
  [window setRootViewController:root];
  [window makeKeyAndVisible];
)";

constexpr const char* kPolicies = R"({"ready": true, "authState": 1, "managedPolicy": 2, "appInfo": {
  "PasscodeExtensionBundleId": "com.example.manager.passcode", "ActivityPasteboardKey": "secret-pasteboard",
  "PasscodeExtFKData": {"base64": "MDEyMzQ1Njc4OWFiY2RlZg=="}}})";

/// The answer lacks a value that goes with "TRUE".
constexpr const char* kPoliciesForAnAnswerWithout = R"({"ready": true, "authState": 1, "managedPolicy": 2, "appInfo": {
  "PasscodeExtensionBundleId": "com.example.answerer.passcode", "ActivityPasteboardKey": "pass without VALUE",
  "PasscodeExtFKData": {"base64": "MDEyMzQ1Njc4OWFiY2RlZg=="}}})";

class Exchange : public testing::Test {
protected:
  Ended run(const std::string& events, const std::string& version = "12.4", const std::string& policies = kPolicies) {
    return qvdevice({"run", "--timeout", "60", "--system-version", version, "--install", MANAGER_APP, "--install",
                     ANSWERER_APP, "--policies", folder.write("policies", policies), "--events",
                     folder.write("events", events), app});
  }

  /// What the run says from the first event until the app is about to end, without what another process has a part in
  /// or what is only waited for: that comes at any time.
  static std::string story(const Ended& ended) {
    std::string text;
    bool begun = false;
    for (const std::string& line : linesOf(ended.out)) {
      begun = begun || line.starts_with("  event ");
      if (line.starts_with("  lifecycle   the app is about to end")) {
        break;
      }
      const bool anyTime = line.starts_with("  app ") || line.starts_with("  extension ") ||
                           line.starts_with("  event       the app has to ask");
      if (begun && !anyTime) {
        text += line.substr(2) + "\n";
      }
    }
    return text;
  }

  /// What became of the extension.
  static std::string steps(const Ended& ended) {
    std::string text;
    for (const std::string& line : linesOf(ended.out)) {
      text += line.starts_with("  extension ") ? line + "\n" : "";
    }
    return text;
  }

  const WorkFolder folder;
  const std::string app = folder.app("Host", appSource(kHost));
};

TEST_F(Exchange, ofARightPasscodeLeavesTheWindowsAsTheAppHasThem) {
  const Ended ended = run(R"(windows
ask isPasscodeExtensionActive
authenticate
extension tap 2
ask isPasscodeExtensionActive
window show Banner 3000
window show Level alert
window key Banner
alert Saved
keyboard show
windows
keyboard hide
extension tap 5
extension tap 8
extension tap 0
extension tap OK
await postPasscodeExtensionResult:
ask isPasscodeExtensionActive
windows
)");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_EQ(story(ended), R"(event       the windows, the frontmost first
windows     level     visible  key  window
windows     0         yes      yes  UIWindow: UIViewController "Host"
event       the SDK asks isPasscodeExtensionActive
sdk         asks isPasscodeExtensionActive: no
event       the SDK wants the user's passcode
sdk         asks canAppDisplayPasscodeExtension: yes
event       in the extension the user taps "2"
event       the SDK asks isPasscodeExtensionActive
sdk         asks isPasscodeExtensionActive: yes
event       the app shows the window "Banner" at level 3000
event       the app shows the window "Level" at level 2000
event       the app makes the window "Banner" key
event       the app shows the alert "Saved"
event       the keyboard comes up
event       the windows, the frontmost first
windows     level     visible  key  window
windows     10000000  yes      no   UITextEffectsWindow
windows     2000      yes      no   UIWindow: QVSBPasscodeExtensionWindowViewController > QVSBApplicationExtensionViewController > _UIRemoteViewController
windows     2000      yes      yes  _UIAlertControllerShimPresenterWindow: UIViewController > UIAlertController "Saved"
windows     2000      yes      no   UIWindow: UIViewController "Level"
windows     0         yes      no   UIWindow: UIViewController "Banner"
windows     0         yes      no   UIWindow: UIViewController "Host"
event       the user puts the keyboard away
event       in the extension the user taps "5"
event       in the extension the user taps "8"
event       in the extension the user taps "0"
event       in the extension the user taps "OK"
log 2       -[QVSBPasscodeExtensionWindowViewController displayExtension]_block_invoke: Passcode Extension returned message: (null)
sdk         postPasscodeExtensionResult: (result {"ak":"sample-ak","checkInRequired":false,"sk":"sample-sk"})
event       the SDK asks isPasscodeExtensionActive
sdk         asks isPasscodeExtensionActive: no
event       the windows, the frontmost first
windows     level     visible  key  window
windows     10000000  no       no   UITextEffectsWindow
windows     3000      yes      yes  UIWindow: UIViewController "Banner"
windows     2000      no       no   UIWindow
windows     2000      yes      no   _UIAlertControllerShimPresenterWindow: UIViewController > UIAlertController "Saved"
windows     2000      yes      no   UIWindow: UIViewController "Level"
windows     0         yes      no   UIWindow: UIViewController "Host"
)");
  EXPECT_THAT(steps(ended), AllOf(HasSubstr("has a process of its own\n"), HasSubstr("shows its view controller\n"),
                                  HasSubstr("has answered\n"), Not(HasSubstr("is interrupted\n"))));
}

TEST_F(Exchange, thatIsInterruptedIsNoPasscode) {
  const Ended ended =
      run("authenticate\nextension tap 2\nextension kill\nawait postPasscodeExtensionResult:\nwindows\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(ended.out,
              HasSubstr("log 0       -[QVSBApplicationExtensionViewController presentExtension]_block_invoke "
                        "Interrupted\n"));
  EXPECT_THAT(ended.out, HasSubstr("sdk         postPasscodeExtensionResult: (result {\"checkInRequired\":true})\n"));
  EXPECT_THAT(ended.out, HasSubstr("windows     0         yes      yes  UIWindow: UIViewController \"Host\"\n"));
}

TEST_F(Exchange, thatGoesToTheBackgroundEndsWithoutAResultAndRestoresTheWindows) {
  const Ended ended = run(R"(authenticate
extension tap 2
window show Banner 3000
windows
background
ask isPasscodeExtensionActive
windows
foreground
windows
)");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_EQ(story(ended), R"(event       the SDK wants the user's passcode
sdk         asks canAppDisplayPasscodeExtension: yes
event       in the extension the user taps "2"
event       the app shows the window "Banner" at level 3000
event       the windows, the frontmost first
windows     level     visible  key  window
windows     2000      yes      yes  UIWindow: QVSBPasscodeExtensionWindowViewController > QVSBApplicationExtensionViewController > _UIRemoteViewController
windows     0         yes      no   UIWindow: UIViewController "Banner"
windows     0         yes      no   UIWindow: UIViewController "Host"
lifecycle   the app is no longer active
log 3       -[ZBWrappedApplicationDelegate zb_applicationWillResignActive:]
log 3       -[QVZorbelDelegate applicationWillResignActive]
decision    -[OutsideDelegate applicationWillResignActive:] asks allowsPasteboard: no (pasteboardPolicy 0)
lifecycle   the app is in the background
log 3       -[ZBWrappedApplicationDelegate zb_applicationDidEnterBackground:]
log 3       (-[QVZorbelDelegate applicationDidEnterBackground]))"
                          " \n"
                          R"(event       the SDK asks isPasscodeExtensionActive
sdk         asks isPasscodeExtensionActive: no
event       the windows, the frontmost first
windows     level     visible  key  window
windows     3000      yes      no   UIWindow: UIViewController "Banner"
windows     2000      no       no   UIWindow
windows     0         yes      yes  UIWindow: UIViewController "Host"
lifecycle   the app comes to the foreground
log 3       -[ZBWrappedApplicationDelegate zb_applicationWillEnterForeground:]
log 3       (-[QVZorbelDelegate applicationWillEnterForeground]))"
                          " \n"
                          R"(lifecycle   the app is active: it is on the screen
log 3       -[ZBWrappedApplicationDelegate zb_applicationDidBecomeActive:]
log 3       -[QVZorbelDelegate applicationDidBecomeActive]
event       the windows, the frontmost first
windows     level     visible  key  window
windows     3000      yes      no   UIWindow: UIViewController "Banner"
windows     2000      no       no   UIWindow
windows     0         yes      yes  UIWindow: UIViewController "Host"
)");
  EXPECT_THAT(steps(ended), AllOf(HasSubstr("is no longer needed and ends\n"), Not(HasSubstr("has answered\n")),
                                  Not(HasSubstr("is interrupted\n"))));
  EXPECT_THAT(ended.out, Not(HasSubstr("postPasscodeExtensionResult:")));
}

TEST_F(Exchange, thatIsAnsweredWithoutAValueEndsTheApp) {
  for (const std::string missing : {"ak", "sk"}) {
    std::string policies = kPoliciesForAnAnswerWithout;
    policies.replace(policies.find("VALUE"), 5, missing);
    const Ended ended = run("authenticate\nawait postPasscodeExtensionResult:\n", "12.4", policies);
    EXPECT_EQ(ended.status, 1) << ended.out;
    EXPECT_THAT(ended.out,
                HasSubstr("*** Terminating app due to uncaught exception 'NSInvalidArgumentException', reason: "
                          "'Tried to add nil value for key '" +
                          missing + "' to dictionary'\n"));
    EXPECT_THAT(ended.out + ended.err, HasSubstr("Host crashed by signal 6 (Aborted).\n"));
    EXPECT_THAT(ended.out, Not(HasSubstr("sdk         postPasscodeExtensionResult:")));
  }
}

TEST_F(Exchange, isNotAskedForOnReleasesWhereTheExtensionCannotBeShown) {
  const struct {
    const char* version;
    const char* answer;
  } cases[] = {{"7.1", "no"}, {"8.2", "yes"}, {"8.3", "yes"}, {"12.4", "yes"}, {"16.0", "yes"}, {"17.0", "no"}};
  for (const auto& each : cases) {
    EXPECT_THAT(run("ask canAppDisplayPasscodeExtension\n", each.version).out,
                HasSubstr(std::string("sdk         asks canAppDisplayPasscodeExtension: ") + each.answer + "\n"))
        << each.version;
  }
  const Ended ended = run("authenticate\n", "17.0");
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, HasSubstr("refused \"authenticate\": the app cannot display the passcode extension"));
}

TEST_F(Exchange, thatIsAwaitedInVainFailsTheRun) {
  const Ended ended = qvdevice(
      {"run", "--timeout", "2", "--events", folder.write("events", "await postPasscodeExtensionResult:\n"), app});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.out,
              HasSubstr("(line 1 of the events) did not ask the SDK for postPasscodeExtensionResult: in 2 seconds"));
}

} // namespace
