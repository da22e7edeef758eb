#pragma once

#import "Hosts.h"

#include "support/Support.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

@interface UIApplication (QVPrivate)
- (void)_setDelegate:(id<UIApplicationDelegate>)delegate assumeOwnership:(BOOL)assumeOwnership;
@end

/// What the tests ask of the library's object that the SDK talks to.
@protocol QVSDKDelegate <NSObject>
- (id)originalDelegate;
- (void)setOriginalDelegate:(id)delegate;
- (UIWindow *)window;
- (void)setWindow:(UIWindow *)window;
@end

extern "C" {
void UIApplicationDelegateSwizzle(id delegate);
void UIApplicationDelegateSwizzleMandatoryMethods(Class cls);
id<QVSDKDelegate> ZorbelDelegate(void);
}

using Lines = std::vector<std::string>;

/// An app whose main has just begun: the library is loaded, the application is there and has no delegate yet. The tests
/// act as the platform does.
class Lifecycle : public testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  /// An object of that class, which lives as long as the test.
  template <class T> static T *make(Class cls) { return [[[cls alloc] init] autorelease]; }
  template <class T> static T *make() { return make<T>([T class]); }

  /// Sets the delegate, and forgets what was heard and logged so far.
  void setDelegate(id delegate);
  /// The same, and finishes launching, which makes the library's object that the SDK talks to.
  void launch(id delegate);

  UIApplication *application = nil;

private:
  NSAutoreleasePool *pool_ = nil;
};

/// `object` as the log shows it.
std::string shown(id object);

/// What is raised by `body`, nil if nothing.
template <class Body> id raisedBy(Body body) {
  @try {
    body();
  } @catch (id raised) {
    return raised;
  }
  return nil;
}

/// The class's own methods with implementations and encodings, as text: equal texts mean an unchanged class.
std::string picture(Class cls);

/// Whether the class has been grafted, itself or by what it inherits.
bool isGrafted(Class cls);

/// What a graft onto a class of that name logs when it has all of the methods, or none of them.
Lines graftLog(const std::string &className, bool hasMethods);
