// The SDK's delegate between an SDK and a host app that both keep what they are told.
#pragma once

#import <UIKit/UIKit.h>

#include "support/Support.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

/// All that happened since the last look, in order: log lines ("log 3 text"), what the SDK, the host and the policy
/// object were sent ("sdk ...", "host ...", "util ..."), and "terminate" where the process would have been ended.
Lines take();
void note(const std::string &event);

/// Plays the SDK: answers with what a test has set.
@interface QVTestZorbel : NSObject {
@public
  BOOL ready;
  BOOL readyToTerminate;
  BOOL checkInRequested;
  NSInteger authState;
  NSInteger managedPolicy;
  NSInteger pasteboardPolicy;
  NSDictionary *config;
  id delegate; // not retained
  void (*whenGivenADelegate)(id given);
  /// What its calls are noted under; "sdk" unless a test has two.
  std::string *name;
}
+ (int)live;
@end

/// Plays the host's delegate: has the optional methods that a test names, and no others.
@interface QVTestHost : NSObject <UIApplicationDelegate> {
@public
  NSMutableSet *methods;
  id answerToConfigIs;
  id answerToConfigChanged;
  BOOL answerToLaunch;
  BOOL answerToURL;
  UIWindow *hostWindow;
  /// The one that raises, after it has been noted.
  NSString *raisesFrom;
  /// Called by every method before it returns.
  void (*during)();
}
- (void)has:(NSString *)selectors, ... NS_REQUIRES_NIL_TERMINATION;
@end

/// What the library's QVZorbelDelegate answers to, as its users know it.
@protocol QVDelegateObject <NSObject>
- (NSDictionary *)launchDictionary;
- (void)setLaunchDictionary:(NSDictionary *)options;
- (NSURL *)launchUrl;
- (void)setLaunchUrl:(NSURL *)url;
- (NSString *)launchSourceApplication;
- (void)setLaunchSourceApplication:(NSString *)application;
- (id)launchAnnotation;
- (void)setLaunchAnnotation:(id)annotation;
- (unsigned char)replay;
- (void)setReplay:(unsigned char)replay;
- (id)qvZorbel;
- (void)setQvZorbel:(id)sdk;
- (UIWindow *)storyboardWindow;
- (void)setStoryboardWindow:(UIWindow *)window;
- (UIWindow *)appKeyWindow;
- (void)setAppKeyWindow:(UIWindow *)window;
- (int64_t)wrappedZorbelState;
- (void)setWrappedZorbelState:(int64_t)state;
- (BOOL)triggeredLog;
- (void)setTriggeredLog:(BOOL)triggered;
- (id)originalDelegate;
- (void)setOriginalDelegate:(id)delegate;
- (UIWindow *)window;
- (void)setWindow:(UIWindow *)window;

- (void)zorbelIsReady:(id)sdk;
- (void)zorbel:(id)sdk authStateChangedTo:(NSInteger)state withMessage:(NSString *)message;
- (void)zorbel:(id)sdk configChangedTo:(NSDictionary *)config;
- (void)zorbel:(id)sdk managedPolicyChangedTo:(NSInteger)policy;
- (void)zorbel:(id)sdk openInPolicyChangedTo:(NSInteger)policy whitelist:(NSArray *)whitelist;
- (void)zorbel:(id)sdk pasteboardPolicyChangedTo:(NSInteger)policy;
- (void)zorbel:(id)sdk printPolicyChangedTo:(NSInteger)policy;
- (BOOL)isPasscodeExtensionActive;
- (BOOL)canAppDisplayPasscodeExtension;
- (void)authenticateUser;

- (void)applicationDidFinishLaunchingWithOptions:(NSDictionary *)options;
- (void)applicationDidBecomeActive;
- (void)applicationWillResignActive;
- (void)applicationDidEnterBackground;
- (void)applicationWillEnterForeground;
- (void)applicationWillTerminate;

- (void)updateWrappedZorbelState;
- (void)notifyAppDelegateWithZorbelState:(int64_t)state;
- (void)triggerLogsInterception;
- (void)addObservers;
- (void)removeObservers;
- (void)didChangeKeyboardMode:(NSNotification *)notification;
- (void)_clearInternalState;
- (BOOL)_replayPendingActions;
- (BOOL)_application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options;
- (BOOL)_application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options;
- (void)_checkIfReadyAndTerminate;
- (void)_applicationTerminate;
@end

/// What the library's ZorbelUtil answers to, as far as the delegate sees to it.
@protocol QVPolicyObject <NSObject>
- (id)zorbel;
- (void)setZorbel:(id)sdk;
- (BOOL)registeredForPasteboardChangeNotification;
- (void)setRegisteredForPasteboardChangeNotification:(BOOL)registered;
@end

@interface NSObject (QVDelegateClass)
+ (UIViewController *)getCurrentViewController:(UIViewController *)controller;
+ (id<QVPolicyObject>)instance;
@end

/// An SDK that is not ready, in use by a new delegate; an application whose delegate has no optional method.
class DelegateTest : public testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  static Class delegateClass();
  /// A delegate that has just been made.
  static id<QVDelegateObject> make();

  static id<QVPolicyObject> util();

  /// Whether a change of the pasteboard reaches the policy object.
  static bool pasteboardIsWatched();

  /// Gives up the SDK, whose only owner is this test.
  void releaseSDK();
  /// Puts another one in its place, which nobody uses yet.
  void makeSDK();

  QVTestZorbel *sdk = nil;
  QVTestHost *host = nil;
  id<QVDelegateObject> delegate = nil;

  /// Of the library's capture of standard error.
  static bool captureIsOn;
  /// What the policy object answers of the passcode extension.
  static BOOL passcodeAnswer;
  static bool wipeRaises;

private:
  NSAutoreleasePool *pool_ = nil;
};

/// The reason of what the block raises; empty when it raises nothing.
std::string raisedBy(void (^block)());
