// The passcode extension's classes between an SDK, an extension and a host app that a test plays.
#pragma once

#import <Foundation/NSExtension.h>
#import <UIKit/UIKit.h>

#include "support/Support.h"

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;
using CompletionHandler = void (^)(BOOL completed, NSArray *returnedItems, NSError *error);

/// Plays the SDK: has what it tells of the app, and notes what it is handed.
@interface QVTestSDK : NSObject {
@public
  NSDictionary *appInfo;
  NSMutableArray *results; // NSNull for nil
  void (^whenHanded)();
}
/// What the thread that handed them over did before has been done, for the one that asks.
- (BOOL)hasResults;
@end

/// Plays an extension: keeps what it is given.
@interface QVTestExtension : NSObject {
@public
  void (^interrupted)(id);
  void (^cancelled)(id, NSError *);
  void (^completed)(id, NSArray *);
  void (^connected)(id, UIViewController *, NSError *);
  NSArray *inputItems;
  /// Called when it is asked for its view controller.
  void (^whenAsked)();
}
+ (int)live;
@end

/// Notes that it appears and disappears, and answers how it wants to be held.
@interface QVTestController : UIViewController {
@public
  std::string name;
  BOOL rotates;
  NSUInteger orientations;
}
@end

@protocol QVExtensionHost <NSObject>
- (id)initWithExtensionIdentifier:(NSString *)identifier
                       inputItems:(NSArray *)items
                completionHandler:(CompletionHandler)handler;
- (void)presentExtension;
- (NSString *)identifier;
- (NSArray *)inputItems;
- (CompletionHandler)handler;
- (id)extension;
- (void)setExtension:(id)extension;
@end

@protocol QVPasscodeWindowController <NSObject>
- (void)displayExtension;
- (UIViewController<QVExtensionHost> *)extensionViewController;
- (void)setExtensionViewController:(id)controller;
@end

@protocol QVWindowInfo <NSObject>
- (UIWindow *)appWindow;
- (void)setAppWindow:(UIWindow *)window;
- (CGFloat)appWindowLevel;
- (void)setAppWindowLevel:(CGFloat)level;
@end

@protocol QVPasscodeManager <NSObject>
- (id)initPrivate;
- (void)start;
- (void)stop;
- (void)postPasscodeExtensionResult:(NSDictionary *)result;
- (BOOL)isPasscodeExtensionActive;
- (BOOL)canAppDisplayPasscodeExtension;
- (void)windowDidBecomeVisible:(NSNotification *)notification;
- (void)windowDidBecomeKey:(NSNotification *)notification;
- (id)getActivityPasteboardKey;
- (id)getAppIconData;
- (id)getPasscodeExtensionBundleId;
- (id)getPasscodeExtensionFK;
- (BOOL)shouldAutorotate;
- (void)setShouldAutorotate:(BOOL)rotates;
- (BOOL)isExtensionActive;
- (void)setIsExtensionActive:(BOOL)active;
- (UIWindow *)appKeyWindow;
- (NSUInteger)supportedInterfaceOrientations;
- (void)setSupportedInterfaceOrientations:(NSUInteger)mask;
- (NSUInteger)autoRotateToInterfaceOrientations;
- (void)setAutoRotateToInterfaceOrientations:(NSUInteger)mask;
- (UIWindow *)extensionWindow;
- (void)setExtensionWindow:(UIWindow *)window;
- (UIViewController<QVPasscodeWindowController> *)windowViewController;
- (void)setWindowViewController:(id)controller;
- (NSMutableArray *)appVisibleWindows;
- (void)setAppVisibleWindows:(NSMutableArray *)windows;
- (NSDictionary *)appInfo;
- (void)setAppInfo:(NSDictionary *)info;
@end

@interface NSObject (QVPasscodeManagerClass)
+ (id)sharedInstance;
@end

/// Notes what happened. Any thread.
void note(const std::string &line);
/// All that was noted since the last look: log lines ("log 0 text") and whatever else.
Lines take();

/// Lets the main queue do all that is on it now, and what that puts there.
void turnMainQueue();

/// Gives the class the implementation; the method must be there.
void replaceMethod(Class cls, const char *selector, IMP implementation);

/// The name and the reason of what the body raises, as "name: reason"; "nothing" when it does not.
std::string raisedBy(const std::function<void()> &body);

/// The app is active and shows a window; an SDK is there, which tells all that there is to tell of the app.
class ExtensionTest : public testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  /// Whether extensions are found as setFound() has it, not on the device.
  virtual bool playsTheExtension() const { return true; }

  /// The host's windows are as they were, and nothing of the extension is left on the screen.
  void expectRestored();

  static void setState(UIApplicationState state);
  static void setDevice(UIUserInterfaceIdiom idiom);
  /// The extension that is found next; without one, the error of that code.
  static void setFound(QVTestExtension *extension);

  static Class hostClass() { return NSClassFromString(@"QVSBApplicationExtensionViewController"); }
  static Class windowControllerClass() { return NSClassFromString(@"QVSBPasscodeExtensionWindowViewController"); }
  static Class managerClass() { return NSClassFromString(@"QVSBPasscodeExtensionManager"); }
  static id<QVPasscodeManager> manager() { return [managerClass() sharedInstance]; }

  /// Counts the host and window controllers that are made and that go, from here on. Once a process.
  static void countControllers();
  /// How many of those that were counted are there.
  static int liveControllers();
  /// How many were counted.
  static int countedControllers();

  /// A window of the host's on the screen, at a level.
  UIWindow *show(CGFloat level);
  /// The host's window, which was key before anything else was.
  UIWindow *window = nil;
  QVTestSDK *sdk = nil;

private:
  NSAutoreleasePool *pool_ = nil;
};
