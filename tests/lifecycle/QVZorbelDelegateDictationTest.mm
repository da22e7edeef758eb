// Dictation, which sends what is spoken to somebody else's servers.
#include "DelegateTest.h"

@interface QVTestInputMode : NSObject {
@public
  id identifier;
}
@end

@implementation QVTestInputMode
- (id)identifier {
  return identifier;
}
@end

@interface QVTestModeWithoutIdentifier : NSObject
@end

@implementation QVTestModeWithoutIdentifier
- (id)valueForKey:(NSString *)key {
  return [key isEqualToString:@"identifier"] ? @"dictation" : [super valueForKey:key];
}
@end

/// A window that keeps what it is told of editing.
@interface QVTestWindow : UIWindow {
@public
  id mode;
}
@end

@implementation QVTestWindow
- (UITextInputMode *)textInputMode {
  return mode;
}
- (BOOL)endEditing:(BOOL)force {
  note("window endEditing: " + std::string(force ? "YES" : "NO"));
  return YES;
}
@end

namespace {

const Lines kDismissed = {"window endEditing: YES", "log 2 Attempting to start Dictation. Dismissing the keyboard."};

/// A host with a window in which dictation begins; the SDK is ready and says nothing of dictation.
class Dictation : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    sdk->ready = YES;
    mode = [[[QVTestInputMode alloc] init] autorelease];
    mode->identifier = @"dictation";
    window = [[[QVTestWindow alloc] init] autorelease];
    window->mode = mode;
    host->hostWindow = window;
    [host has:@"window", nil];
  }

  void allow(id value) { sdk->config = [@{@"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION" : value} retain]; }

  static void change() {
    [[NSNotificationCenter defaultCenter] postNotificationName:@"UITextInputCurrentInputModeDidChangeNotification"
                                                        object:nil];
  }

  QVTestInputMode *mode = nil;
  QVTestWindow *window = nil;
};

} // namespace

TEST_F(Dictation, IsDismissedUnlessTheConfigurationAllowsIt) {
  change();
  EXPECT_EQ(take(), kDismissed);
  allow(@"NO");
  change();
  EXPECT_EQ(take(), kDismissed);
}

TEST_F(Dictation, IsLeftAloneWhereTheConfigurationAllowsIt) {
  allow(@"YES");
  change();
  EXPECT_EQ(take(), Lines());
}

TEST_F(Dictation, IsDismissedAsLongAsTheSDKIsNotReady) {
  allow(@"YES");
  sdk->ready = NO;
  change();
  EXPECT_EQ(take(), kDismissed);
}

TEST_F(Dictation, IsDismissedOnceTheSDKHasGone) {
  allow(@"YES");
  releaseSDK();
  change();
  EXPECT_EQ(take(), kDismissed);
}

TEST_F(Dictation, IsKnownByItsExactIdentifier) {
  for (id identifier in @[ @"Dictation", @"dictation ", @"dictation@en", @"", @"en_US", [NSNull null], @7 ]) {
    mode->identifier = identifier;
    change();
    EXPECT_EQ(take(), Lines()) << [[identifier description] UTF8String];
  }
  mode->identifier = nil;
  change();
  EXPECT_EQ(take(), Lines());
  mode->identifier = [NSMutableString stringWithString:@"dictation"];
  change();
  EXPECT_EQ(take(), kDismissed);
}

TEST_F(Dictation, IsNotAskedForOfAModeWithoutAnIdentifier) {
  window->mode = [[[QVTestModeWithoutIdentifier alloc] init] autorelease];
  change();
  EXPECT_EQ(take(), Lines());
}

TEST_F(Dictation, WithoutAnInputModeIsNone) {
  window->mode = nil;
  change();
  EXPECT_EQ(take(), Lines());
}

TEST_F(Dictation, WithoutAWindowOrAHostIsNone) {
  host->hostWindow = nil;
  change();
  [host->methods removeAllObjects];
  change();
  [[UIApplication sharedApplication] setDelegate:nil];
  change();
  EXPECT_EQ(take(), Lines());
}

TEST_F(Dictation, IsWatchedWhoeverAnnouncesItAndUnderNoOtherName) {
  [[NSNotificationCenter defaultCenter] postNotificationName:@"UITextInputCurrentInputModeDidChangeNotification"
                                                      object:window];
  EXPECT_EQ(take(), kDismissed);
  [[NSNotificationCenter defaultCenter] postNotificationName:@"QVTestOther" object:nil];
  EXPECT_EQ(take(), Lines());
}

TEST_F(Dictation, IsNotWatchedAfterTheObserversAreRemovedAndAgainAfterTheyAreAdded) {
  [delegate removeObservers];
  change();
  EXPECT_EQ(take(), Lines());
  [delegate addObservers];
  change();
  EXPECT_EQ(take(), kDismissed);
}

TEST_F(Dictation, IsNotWatchedByADelegateThatHasGone) {
  [delegate release];
  delegate = nil;
  change();
  EXPECT_EQ(take(), Lines());
}

@interface UITextInputMode (QVDeviceInputModes)
+ (BOOL)qvdevice_isDictating;
+ (void)qvdevice_setDictating:(BOOL)dictating;
@end

TEST_F(Dictation, EndsTheEditingInTheDevicesOwnWindowAndTheKeyboardDoesNot) {
  UIWindow *const real = [[[UIWindow alloc] initWithFrame:CGRectMake(0, 0, 100, 100)] autorelease];
  UITextField *const field = [[[UITextField alloc] initWithFrame:CGRectMake(0, 0, 100, 20)] autorelease];
  [real addSubview:field];
  [real makeKeyAndVisible];
  host->hostWindow = real;
  ASSERT_TRUE([field becomeFirstResponder]);
  change();
  EXPECT_TRUE([field isFirstResponder]);
  EXPECT_EQ(take(), Lines());
  [UITextInputMode qvdevice_setDictating:YES];
  EXPECT_FALSE([field isFirstResponder]);
  EXPECT_EQ(take(), Lines{"log 2 Attempting to start Dictation. Dismissing the keyboard."});
  [UITextInputMode qvdevice_setDictating:NO];
  allow(@"YES");
  ASSERT_TRUE([field becomeFirstResponder]);
  [UITextInputMode qvdevice_setDictating:YES];
  EXPECT_TRUE([field isFirstResponder]);
  EXPECT_EQ(take(), Lines());
  [UITextInputMode qvdevice_setDictating:NO];
  [field resignFirstResponder];
}
