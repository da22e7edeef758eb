#pragma once

#import "Sharing.h"

#include "support/Support.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

/// A test with an SDK that is ready and forbids everything.
class SharingTest : public testing::Test {
protected:
  void SetUp() override {
    pool_ = [[NSAutoreleasePool alloc] init];
    sdk = sharing::startSDK();
    support::clearLog();
  }
  void TearDown() override {
    sharing::stopSDK(sdk);
    [pool_ drain];
  }

  void allowAll() { allow(1, 1, 1); }
  void allow(NSInteger openIn, NSInteger pasteboard, NSInteger print) {
    sdk->openInPolicy = openIn;
    sdk->pasteboardPolicy = pasteboard;
    sdk->printPolicy = print;
  }
  void useWhitelist(NSArray *patterns) {
    sdk->openInPolicy = 2;
    [sdk->openInWhitelist release];
    sdk->openInWhitelist = [patterns copy];
  }

  static NSURL *letter() { return sharing::file(@"letter.txt", @"secret"); }

  QVSharingSDK *sdk = nil;

private:
  NSAutoreleasePool *pool_ = nil;
};

/// An activity of an app's own, of any type; counts how often it has been performed.
@interface QVOwnActivity : UIActivity {
@public
  id type; // what activityType answers, whatever that is
  int performed;
}
+ (instancetype)activityOfType:(id)type;
@end
