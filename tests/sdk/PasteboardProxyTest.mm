#import <UIKit/UIKit.h>
#import <Zorbel/QVDeviceRecord.h>
#import <Zorbel/Zorbel.h>

#include <gtest/gtest.h>

namespace {

class PasteboardProxy : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    sdk = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
    proxy = [sdk proxyForPasteboard:[UIPasteboard generalPasteboard]];
  }
  void TearDown() override { [pool drain]; }

  NSAutoreleasePool *pool;
  Zorbel *sdk;
  UIPasteboard *proxy;
};

TEST_F(PasteboardProxy, isNotThePasteboardItself) { EXPECT_NE(proxy, [UIPasteboard generalPasteboard]); }

TEST_F(PasteboardProxy, readsAndWritesThePasteboard) {
  NSArray *const items = @[ @{@"public.text" : @"a"} ];
  [[UIPasteboard generalPasteboard] setItems:items];
  EXPECT_TRUE([[proxy items] isEqual:items]);
  NSArray *const others = @[ @{@"public.text" : @"b"}, @{@"public.url" : @"c"} ];
  [proxy setItems:others];
  EXPECT_TRUE([[[UIPasteboard generalPasteboard] items] isEqual:others]);
}

TEST_F(PasteboardProxy, forwardsAllElse) {
  EXPECT_TRUE([proxy isKindOfClass:[UIPasteboard class]]);
  EXPECT_TRUE([proxy respondsToSelector:@selector(setItems:)]);
  EXPECT_TRUE([[proxy valueForKey:@"items"] isEqual:@[]]);
}

TEST_F(PasteboardProxy, ofNilIsNil) { EXPECT_EQ([sdk proxyForPasteboard:nil], nil); }

TEST_F(PasteboardProxy, leavesNothingInTheRecord) {
  const NSUInteger before = [QVDeviceZorbelRecord() count];
  [proxy setItems:[proxy items]];
  EXPECT_EQ([QVDeviceZorbelRecord() count], before);
}

} // namespace
