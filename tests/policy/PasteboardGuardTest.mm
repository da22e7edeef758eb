// When the guard acts, and what it leaves on the pasteboard.
#include "PasteboardGuard.h"

using Guard = PasteboardGuard;

namespace {

NSNotification *changed() {
  return [NSNotification notificationWithName:UIPasteboardChangedNotification object:[UIPasteboard generalPasteboard]];
}

} // namespace

TEST_F(Guard, UnderPoliciesOneAndTwoNeverTouchesThePasteboard) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  for (const NSInteger policy : {NSInteger{1}, NSInteger{2}}) {
    guarded->pasteboardPolicy = policy;
    leaveWith(@[ own(@"copied"), zorbels(@"sdk") ]);
    EXPECT_EQ(pasteboard->reads + pasteboard->writes, 0) << policy;
    expectHeld(@[ own(@"copied"), zorbels(@"sdk") ]);
  }
}

TEST_F(Guard, WritesNothingWhenThePasteboardIsAsItWas) {
  hold(@[ own(@"a"), zorbels(@"sdk"), own(@"b") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"a"), zorbels(@"sdk"), own(@"b") ]);
  EXPECT_EQ(pasteboard->writes, 0);
}

TEST_F(Guard, WritesNothingWhenTheSameItemsStandInAnotherOrderOrNumber) {
  hold(@[ own(@"a"), own(@"b") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"b"), own(@"a"), own(@"b") ]);
  EXPECT_EQ(pasteboard->writes, 0);
}

TEST_F(Guard, WritesNothingWhenOnlyTheSDKsItemsHaveChanged) {
  hold(@[ own(@"a"), zorbels(@"old") ]);
  [util takeSnapshot];
  leaveWith(@[ zorbels(@"new"), own(@"a"), zorbels(@"newer") ]);
  EXPECT_EQ(pasteboard->writes, 0);
}

TEST_F(Guard, PutsBackWhatWasThereWhenTheAppHasCopied) {
  hold(@[ own(@"before"), own(@"and more") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"copied") ]);
  EXPECT_EQ(pasteboard->writes, 1);
  expectHeld(@[ own(@"before"), own(@"and more") ]);
}

TEST_F(Guard, KeepsTheSDKsItemsOfNowAndBringsNoneBack) {
  hold(@[ zorbels(@"old"), own(@"before") ]);
  [util takeSnapshot];
  leaveWith(@[ zorbels(@"new"), own(@"copied"), zorbels(@"newer") ]);
  EXPECT_EQ(pasteboard->writes, 1);
  expectHeld(@[ own(@"before"), zorbels(@"new"), zorbels(@"newer") ]);
}

TEST_F(Guard, TakesAwayWhatWasCopiedOntoAnEmptyPasteboard) {
  [util takeSnapshot];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[]);
}

TEST_F(Guard, PutsBackAllWhenTheAppHasOnlyAddedAnItemOrOnlyRemovedOne) {
  hold(@[ own(@"a"), own(@"b") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"a"), own(@"b"), own(@"c") ]);
  expectHeld(@[ own(@"a"), own(@"b") ]);
  leaveWith(@[ own(@"b") ]);
  expectHeld(@[ own(@"a"), own(@"b") ]);
}

TEST_F(Guard, WritesNothingWhenOnlyTheSDKsItemsAreThere) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  leaveWith(@[ zorbels(@"sdk") ]);
  EXPECT_EQ(pasteboard->writes, 0);
  expectHeld(@[ zorbels(@"sdk") ]);
}

TEST_F(Guard, WritesNothingOntoAPasteboardThatIsEmptyNow) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  leaveWith(@[]);
  EXPECT_EQ(pasteboard->writes, 0);
  expectHeld(@[]);
}

TEST_F(Guard, WritesNothingWhenThePasteboardCannotBeRead) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  leaveWith(nil);
  EXPECT_EQ(pasteboard->writes, 0);
}

TEST_F(Guard, LeavesOnlyTheSDKsItemsWhenTheSnapshotWasTakenWithoutAnSDK) {
  hold(@[ own(@"before") ]);
  [util setZorbel:nil];
  [util takeSnapshot];
  [util setZorbel:guarded];
  leaveWith(@[ own(@"before"), zorbels(@"sdk"), own(@"copied") ]);
  EXPECT_EQ(pasteboard->writes, 1);
  expectHeld(@[ zorbels(@"sdk") ]);
}

TEST_F(Guard, LeavesOnlyTheSDKsItemsWhenThePasteboardCouldNotBeReadForTheLastSnapshot) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  hold(nil);
  [util takeSnapshot];
  leaveWith(@[ own(@"copied"), zorbels(@"sdk") ]);
  expectHeld(@[ zorbels(@"sdk") ]);
}

TEST_F(Guard, LeavesOnlyTheSDKsItemsWhenNoSnapshotWasEverTaken) {
  leaveWith(@[ own(@"copied"), zorbels(@"sdk") ]);
  expectHeld(@[ zorbels(@"sdk") ]);
}

TEST_F(Guard, NeitherReadsNorWritesWithoutAnSDK) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  [util setZorbel:nil];
  leaveWith(@[ own(@"copied") ]);
  [util _restorePasteboardSnapshot];
  [util takeSnapshot];
  [util pasteboardContentChanged:changed()];
  EXPECT_EQ(pasteboard->reads + pasteboard->writes, 0);
  expectHeld(@[ own(@"copied") ]);
}

TEST_F(Guard, PutsBackUnderAnSDKThatIsNotReady) {
  guarded->pasteboardPolicy = 1;
  guarded->ready = NO;
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[ own(@"before") ]);
}

TEST_F(Guard, PutsBackUnderAPolicyThatNobodyKnows) {
  guarded->pasteboardPolicy = 3;
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[ own(@"before") ]);
}

TEST_F(Guard, PutsBackWhateverThePolicyOnceItIsToldTo) {
  guarded->pasteboardPolicy = 1;
  hold(@[ own(@"before") ]);
  [util _snapshotPasteboard];
  hold(@[ own(@"copied") ]);
  [util _restorePasteboardSnapshot];
  expectHeld(@[ own(@"before") ]);
}

TEST_F(Guard, TakesASnapshotUnderEveryPolicy) {
  for (const NSInteger policy : {NSInteger{0}, NSInteger{1}, NSInteger{2}, NSInteger{7}}) {
    NSString *const text = [NSString stringWithFormat:@"%ld", (long)policy];
    guarded->pasteboardPolicy = policy;
    hold(@[ own(text) ]);
    [util takeSnapshot];
    guarded->pasteboardPolicy = 0;
    leaveWith(@[ own(@"copied") ]);
    expectHeld(@[ own(text) ]);
  }
}

TEST_F(Guard, RemembersTheLastSnapshotForAsManyDeparturesAsFollow) {
  hold(@[ own(@"first") ]);
  [util takeSnapshot];
  hold(@[ own(@"second") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[ own(@"second") ]);
  leaveWith(@[ own(@"copied again") ]);
  expectHeld(@[ own(@"second") ]);
}

TEST_F(Guard, UsesTheSDKsProxyOfTheGeneralPasteboardAndNothingElse) {
  UIPasteboard *const general = [UIPasteboard generalPasteboard];
  [general setString:@"of another world"];
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  EXPECT_EQ(guarded->askedFor, general);
  guarded->askedFor = nil;
  leaveWith(@[ own(@"copied") ]);
  EXPECT_EQ(guarded->askedFor, general);
  expectHeld(@[ own(@"before") ]);
  guarded->askedFor = nil;
  [util pasteboardContentChanged:changed()];
  EXPECT_EQ(guarded->askedFor, general);
  EXPECT_TRUE([[general string] isEqual:@"of another world"]);
  EXPECT_EQ([general changeCount], 1);
}

TEST_F(Guard, DoesNothingWhereTheSDKHasNoProxyToGive) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  [guarded->pasteboard release];
  guarded->pasteboard = nil;
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[ own(@"copied") ]);
}

// MARK: A pasteboard that somebody empties

TEST_F(Guard, DoesNotRefillAPasteboardThatWasEmptiedMeanwhile) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  hold(@[]);
  [util pasteboardContentChanged:changed()];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[]);
}

TEST_F(Guard, KeepsItsSnapshotWhenThePasteboardHasChangedToSomethingElse) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  hold(@[ own(@"something") ]);
  [util pasteboardContentChanged:changed()];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[ own(@"before") ]);
}

TEST_F(Guard, KeepsItsSnapshotWhenOnlyTheSDKsItemsAreLeft) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  hold(@[ zorbels(@"sdk") ]);
  [util pasteboardContentChanged:changed()];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[ own(@"before") ]);
}

TEST_F(Guard, ForgetsItsSnapshotWhenTheSDKIsGoneAtAChange) {
  hold(@[ own(@"before") ]);
  [util takeSnapshot];
  [util setZorbel:nil];
  [util pasteboardContentChanged:changed()];
  [util setZorbel:guarded];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[]);
}

TEST_F(Guard, DoesNotEvenLookWithoutASnapshot) {
  [util setZorbel:nil];
  [util takeSnapshot];
  [util setZorbel:guarded];
  [util pasteboardContentChanged:changed()];
  EXPECT_EQ(pasteboard->reads, 0);
}

TEST_F(Guard, IsToldOfAChangeByTheNotificationCentre) {
  guarded->pasteboard = (QVTestPasteboard *)[[UIPasteboard generalPasteboard] retain];
  UIPasteboard *const general = [UIPasteboard generalPasteboard];
  [[NSNotificationCenter defaultCenter] addObserver:util selector:@selector(pasteboardContentChanged:)
                                               name:UIPasteboardChangedNotification
                                             object:general];
  [general setString:@"before"];
  [util takeSnapshot];
  [general setItems:@[]];
  [general setString:@"copied"];
  [util restoreSnapshot];
  EXPECT_EQ([general numberOfItems], 0);
  [[NSNotificationCenter defaultCenter] removeObserver:util];
  [pasteboard release];
}

// MARK: The real parts together

TEST_F(Guard, GuardsTheDevicesPasteboardThroughTheSDKsOwnProxy) {
  UIPasteboard *const general = [UIPasteboard generalPasteboard];
  [guarded->pasteboard release];
  guarded->pasteboard = [[[NSClassFromString(@"ZBProxy") alloc] performSelector:@selector(initWithTarget:)
                                                                     withObject:general] retain];
  NSData *const bytes = [NSData dataWithBytes:"x" length:1];
  [general setItems:@[ @{@"public.utf8-plain-text" : @"before", @"com.example.data" : bytes}, zorbels(@"old") ]];
  [util takeSnapshot];
  [general setItems:@[ own(@"secret"), zorbels(@"new") ]];
  [util restoreSnapshot];
  EXPECT_TRUE([[general items]
      isEqual:(@[ @{@"public.utf8-plain-text" : @"before", @"com.example.data" : bytes}, zorbels(@"new") ])]);
}
