// What follows from a change of a policy, and what the SDK asks of the passcode extension.
#include "DelegateTest.h"

#include <objc/runtime.h>

namespace {

class PolicyChange : public DelegateTest {
protected:
  void changePasteboard(NSInteger policy) { [delegate zorbel:sdk pasteboardPolicyChangedTo:policy]; }
};

} // namespace

TEST_F(PolicyChange, OfOpeningInAreLoggedAndAnswered) {
  for (const auto &[policy, text] : {std::pair{NSInteger{0}, "Unauthorized"},
                                     {NSInteger{1}, "Authorized"},
                                     {NSInteger{2}, "Whitelist"},
                                     {NSInteger{3}, "Unknown OpenIn State"},
                                     {NSInteger{-1}, "Unknown OpenIn State"}}) {
    [delegate zorbel:sdk openInPolicyChangedTo:policy whitelist:@[ @"com.example" ]];
    EXPECT_EQ(take(), (Lines{"log 3 open-in policy changed to '" + std::string(text) + "'",
                             "sdk openInPolicyApplied: 1 message: nil"}));
  }
  [delegate zorbel:sdk openInPolicyChangedTo:2 whitelist:nil];
  EXPECT_EQ(take(), (Lines{"log 3 open-in policy changed to 'Whitelist'", "sdk openInPolicyApplied: 1 message: nil"}));
}

TEST_F(PolicyChange, OfPrintingAreLoggedAndAnswered) {
  for (const auto &[policy, text] : {std::pair{NSInteger{0}, "Unauthorized"},
                                     {NSInteger{1}, "Authorized"},
                                     {NSInteger{2}, "Unknown Print State"},
                                     {NSInteger{-1}, "Unknown Print State"}}) {
    [delegate zorbel:sdk printPolicyChangedTo:policy];
    EXPECT_EQ(take(), (Lines{"log 3 print policy changed to '" + std::string(text) + "'",
                             "sdk printPolicyApplied: 1 message: nil"}));
  }
}

TEST_F(PolicyChange, OfThePasteboardAreLoggedAndAnswered) {
  for (const auto &[policy, text] : {std::pair{NSInteger{0}, "Unauthorized"},
                                     {NSInteger{1}, "Authorized"},
                                     {NSInteger{2}, "Secure Copy"},
                                     {NSInteger{3}, "Unknown Pasteboard State"},
                                     {NSInteger{-1}, "Unknown Pasteboard State"}}) {
    changePasteboard(policy);
    EXPECT_EQ(take(), (Lines{"log 3 pasteboard policy changed to '" + std::string(text) + "'",
                             "sdk pasteboardPolicyApplied: 1 message: nil"}));
  }
}

TEST_F(PolicyChange, OfThePasteboardHaveItWatchedUnderZeroAndUnderNoOther) {
  for (const NSInteger policy : {0, 1, 0, 2, 0, 3, 0, -1, 1, 0, 0}) {
    changePasteboard(policy);
    EXPECT_EQ([util() registeredForPasteboardChangeNotification], policy == 0) << policy;
    EXPECT_EQ(pasteboardIsWatched(), policy == 0) << policy; // and one notice, not two
  }
}

TEST_F(PolicyChange, OfThePasteboardLeaveAnObserverOfAnotherPasteboardEventAlone) {
  changePasteboard(0);
  [[NSNotificationCenter defaultCenter] addObserver:util() selector:@selector(stopPasscodeExtension) name:@"QVTestOther"
                                             object:nil];
  changePasteboard(1);
  take();
  [[NSNotificationCenter defaultCenter] postNotificationName:@"QVTestOther" object:nil];
  EXPECT_EQ(take(), Lines{"util stopPasscodeExtension"});
  [[NSNotificationCenter defaultCenter] removeObserver:util() name:@"QVTestOther" object:nil];
}

TEST_F(PolicyChange, OfThePasteboardGoByTheFlagOnly) {
  [util() setRegisteredForPasteboardChangeNotification:YES];
  changePasteboard(0);
  EXPECT_FALSE(pasteboardIsWatched());
  changePasteboard(1);
  EXPECT_EQ([util() registeredForPasteboardChangeNotification], NO);
}

TEST_F(PolicyChange, OfThePasteboardAreAnsweredBeforeItIsWatched) {
  // The answer finds the flag as it was.
  static bool watchedWhenAnswered;
  const Method answer = class_getInstanceMethod([QVTestZorbel class], @selector(pasteboardPolicyApplied:message:));
  const IMP before = method_getImplementation(answer);
  method_setImplementation(answer, reinterpret_cast<IMP>(+[](id, SEL, NSInteger, NSString *) {
                             watchedWhenAnswered = [util() registeredForPasteboardChangeNotification];
                           }));
  changePasteboard(0);
  EXPECT_FALSE(watchedWhenAnswered);
  changePasteboard(1);
  EXPECT_TRUE(watchedWhenAnswered);
  method_setImplementation(answer, before);
}

TEST_F(PolicyChange, OfManagementOnlyUpdateTheState) {
  sdk->ready = YES;
  sdk->authState = 1;
  sdk->managedPolicy = 2;
  [host has:@"zorbelStateChangedTo:", nil];
  [delegate zorbel:sdk managedPolicyChangedTo:2];
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 1"});
  // What counts is what the SDK in use answers, not what the callback says.
  [delegate zorbel:sdk managedPolicyChangedTo:0];
  EXPECT_EQ(take(), Lines());
  sdk->managedPolicy = 0;
  [delegate zorbel:nil managedPolicyChangedTo:2];
  EXPECT_EQ(take(), Lines{"host zorbelStateChangedTo: 0"});
}

TEST_F(PolicyChange, AreLoggedAndThePasteboardWatchedWithoutAnSDK) {
  releaseSDK();
  [delegate zorbel:nil openInPolicyChangedTo:0 whitelist:nil];
  [delegate zorbel:nil pasteboardPolicyChangedTo:0];
  [delegate zorbel:nil printPolicyChangedTo:0];
  EXPECT_EQ(take(), (Lines{"log 3 open-in policy changed to 'Unauthorized'",
                           "log 3 pasteboard policy changed to 'Unauthorized'",
                           "log 3 print policy changed to 'Unauthorized'"}));
  EXPECT_TRUE(pasteboardIsWatched());
}

TEST_F(PolicyChange, AreAnsweredToTheSDKThatTheyCameFrom) {
  QVTestZorbel *const other = [[[QVTestZorbel alloc] init] autorelease];
  *other->name = "other";
  [delegate zorbel:other openInPolicyChangedTo:1 whitelist:nil];
  [delegate zorbel:other pasteboardPolicyChangedTo:1];
  [delegate zorbel:other printPolicyChangedTo:1];
  EXPECT_EQ(take(),
            (Lines{"log 3 open-in policy changed to 'Authorized'", "other openInPolicyApplied: 1 message: nil",
                   "log 3 pasteboard policy changed to 'Authorized'", "other pasteboardPolicyApplied: 1 message: nil",
                   "log 3 print policy changed to 'Authorized'", "other printPolicyApplied: 1 message: nil"}));
}

using PasscodeQuestions = DelegateTest;

TEST_F(PasscodeQuestions, AreAnsweredAsThePolicyObjectAnswers) {
  for (const BOOL answer : {YES, NO}) {
    passcodeAnswer = answer;
    EXPECT_EQ([delegate isPasscodeExtensionActive], answer);
    EXPECT_EQ([delegate canAppDisplayPasscodeExtension], answer);
    EXPECT_EQ(take(), (Lines{"util isPasscodeExtensionActive", "util canAppDisplayPasscodeExtension"}));
  }
}

TEST_F(PasscodeQuestions, ToAuthenticateTheUserStartTheExtension) {
  [delegate authenticateUser];
  EXPECT_EQ(take(), Lines{"util startPasscodeExtension"});
}

TEST_F(PasscodeQuestions, AndAllTheOtherCallbacksHaveTheEncodingsOfTheSDKsProtocol) {
  struct Callback {
    const char *selector, *types;
  };
  for (const Callback &callback : {
           Callback{"zorbelIsReady:", "v24@0:8@16"},
           Callback{"zorbel:authStateChangedTo:withMessage:", "v40@0:8@16q24@32"},
           Callback{"zorbel:configChangedTo:", "v32@0:8@16@24"},
           Callback{"zorbel:managedPolicyChangedTo:", "v32@0:8@16q24"},
           Callback{"zorbel:openInPolicyChangedTo:whitelist:", "v40@0:8@16q24@32"},
           Callback{"zorbel:pasteboardPolicyChangedTo:", "v32@0:8@16q24"},
           Callback{"zorbel:printPolicyChangedTo:", "v32@0:8@16q24"},
           Callback{"isPasscodeExtensionActive", "C16@0:8"},
           Callback{"canAppDisplayPasscodeExtension", "C16@0:8"},
           Callback{"authenticateUser", "v16@0:8"},
       }) {
    const SEL selector = sel_registerName(callback.selector);
    EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(delegateClass(), selector)), callback.types);
    const auto declared = protocol_getMethodDescription(NSProtocolFromString(@"ZorbelDelegate"), selector, YES, YES);
    ASSERT_TRUE(declared.types != nullptr) << callback.selector;
    EXPECT_STREQ(declared.types, callback.types);
  }
}
