#include "PasteboardGuard.h"

#import <Zorbel/QVDevicePolicies.h>

#include <nlohmann/json.hpp>

@implementation QVTestPasteboard

- (void)dealloc {
  [held release];
  [super dealloc];
}

- (NSArray *)items {
  ++reads;
  return [[held retain] autorelease];
}

- (void)setItems:(NSArray *)items {
  ++writes;
  [held autorelease];
  held = [items copy];
}

@end

@implementation QVTestPasteboardSDK

- (void)dealloc {
  [pasteboard release];
  [super dealloc];
}

- (id)proxyForPasteboard:(UIPasteboard *)asked {
  askedFor = asked;
  return pasteboard;
}

@end

void PasteboardGuard::SetUp() {
  Policy::SetUp();
  guarded = [[QVTestPasteboardSDK alloc] init];
  pasteboard = [[QVTestPasteboard alloc] init];
  pasteboard->held = [@[] retain];
  guarded->pasteboard = [pasteboard retain];
  [util setZorbel:guarded];
  setPrefixes(@[ @"com.example.sdk." ]);
}

void PasteboardGuard::TearDown() {
  [guarded release];
  [pasteboard release];
  Policy::TearDown();
}

NSDictionary *PasteboardGuard::own(NSString *text) { return @{@"public.utf8-plain-text" : text}; }

NSDictionary *PasteboardGuard::zorbels(NSString *text) { return @{@"com.example.sdk.item" : text}; }

void PasteboardGuard::setPrefixes(NSArray *prefixes) {
  nlohmann::json list = nlohmann::json::array();
  for (NSString *prefix in prefixes)
    list.push_back([prefix UTF8String]);
  QVDeviceZorbelSetPolicies(
      [NSString stringWithUTF8String:nlohmann::json{{"zbPasteboardTypePrefixes", list}}.dump().c_str()]);
}

void PasteboardGuard::hold(NSArray *items) {
  [pasteboard->held autorelease];
  pasteboard->held = [items copy];
}

void PasteboardGuard::expectHeld(NSArray *items) {
  EXPECT_TRUE([pasteboard->held isEqual:items]) << [[pasteboard->held description] UTF8String];
}

void PasteboardGuard::leaveWith(NSArray *items) {
  hold(items);
  pasteboard->reads = pasteboard->writes = 0;
  [util restoreSnapshot];
}
