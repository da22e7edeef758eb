// What tests of views share: an application, windows on the screen, and a list of what happened.
#pragma once

#import <UIKit/UIKit.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Notes = std::vector<std::string>;

// Where the classes of a test note what they were told; there while a test runs.
inline Notes *notes;

class UIKitTest : public ::testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    notes = &written;
    application = [[[UIApplication alloc] init] autorelease];
  }
  void TearDown() override {
    [pool drain];
    notes = nullptr;
  }

  // On the screen, the key window.
  UIWindow *shownWindow() {
    UIWindow *const window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
    [window makeKeyAndVisible];
    return window;
  }

  // A new view of a class, in `above` when that is not nil.
  template <class Kind = UIView> Kind *view(CGRect frame, UIView *above = nil) {
    Kind *const made = [[[Kind alloc] initWithFrame:frame] autorelease];
    [above addSubview:made];
    return made;
  }

  static std::string text(id string) { return string ? [[string description] UTF8String] : "nil"; }

  NSAutoreleasePool *pool = nil;
  UIApplication *application = nil;
  Notes written;
};
