#pragma once

#include "Policy.h"

/// Plays the pasteboard behind the SDK's proxy, and keeps count of its uses.
@interface QVTestPasteboard : NSObject {
@public
  NSArray *held;
  int reads;
  int writes;
}
- (NSArray *)items;
- (void)setItems:(NSArray *)items;
@end

/// An SDK whose proxy is such a pasteboard.
@interface QVTestPasteboardSDK : QVTestSDK {
@public
  QVTestPasteboard *pasteboard;
  UIPasteboard *askedFor;
}
- (id)proxyForPasteboard:(UIPasteboard *)asked;
@end

/// A test with the guard, an SDK that is ready and allows nothing, and a pasteboard that is empty. The SDK's own items
/// are those with a type that begins with "com.example.sdk.".
class PasteboardGuard : public Policy {
protected:
  void SetUp() override;
  void TearDown() override;

  /// An item of the host app.
  static NSDictionary *own(NSString *text);
  /// An item of the SDK.
  static NSDictionary *zorbels(NSString *text);

  static void setPrefixes(NSArray *prefixes);

  void hold(NSArray *items);
  void expectHeld(NSArray *items);

  /// As when the app leaves the foreground, with `items` on the pasteboard.
  void leaveWith(NSArray *items);

  QVTestPasteboardSDK *guarded = nil;
  QVTestPasteboard *pasteboard = nil;
};
