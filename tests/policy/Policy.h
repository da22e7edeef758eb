#pragma once

#import <UIKit/UIKit.h>

#include "support/Support.h"

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// Plays the SDK: answers with what a test has set, and keeps what it is sent.
@interface QVTestSDK : NSObject {
@public
  BOOL ready;
  NSInteger openInPolicy;
  NSInteger pasteboardPolicy;
  NSInteger printPolicy;
  id openInWhitelist;
  NSDictionary *appInfo;
  NSMutableArray *events;
  NSMutableArray *results;
  /// Called by each question whether it is ready.
  void (*whenAskedWhetherReady)();
}
/// How many of them there are.
+ (int)live;
@end

/// What the library's ZorbelUtil answers to, as its users know it.
@protocol QVPolicyObject <NSObject>
- (id)zorbel;
- (void)setZorbel:(id)zorbel;
- (BOOL)registeredForPasteboardChangeNotification;
- (void)setRegisteredForPasteboardChangeNotification:(BOOL)registered;
- (long long)pasteboardProxyForwardInvocationReturnAddress;
- (void)setPasteboardProxyForwardInvocationReturnAddress:(long long)address;
- (BOOL)allowsPasteboard;
- (BOOL)allowsPrinting;
- (BOOL)allowsOpenInWithAppId:(NSString *)appId;
- (BOOL)_whitelistApprovedAppId:(NSString *)appId;
- (BOOL)_doesAppID:(NSString *)appId matchPattern:(NSString *)pattern;
- (NSArray *)mergeExcludedActivityTypes:(NSArray *)types;
- (void)resetInactivity:(UIEvent *)event;
- (void)wipeApplication;
- (void)takeSnapshot;
- (void)restoreSnapshot;
- (void)_snapshotPasteboard;
- (void)_restorePasteboardSnapshot;
- (BOOL)_isZorbelItem:(NSDictionary *)item;
- (NSSet *)_zorbelItems:(NSArray *)items;
- (void)pasteboardContentChanged:(NSNotification *)notification;
- (BOOL)isPasscodeExtensionActive;
- (BOOL)canAppDisplayPasscodeExtension;
- (void)startPasscodeExtension;
- (void)stopPasscodeExtension;
- (NSDictionary *)getAppInfo;
- (void)postPasscodeExtensionResult:(NSDictionary *)result;
@end

@interface NSObject (QVPolicyClass)
+ (id<QVPolicyObject>)instance;
@end

/// A test with an SDK that is ready and allows nothing, and the library's policy object that has been given it.
class Policy : public testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  /// Takes the SDK away again.
  void releaseSDK();

  QVTestSDK *sdk = nil;
  id<QVPolicyObject> util = nil;

private:
  NSAutoreleasePool *pool_ = nil;
};

/// The entries, each of which must stand there once.
std::set<std::string> setOf(NSArray *strings);
