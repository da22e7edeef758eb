#import "Pooled.h"

#include <objc/runtime.h>

namespace {

class ExtensionItem : public Pooled {};

TEST_F(ExtensionItem, StartsEmpty) {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  EXPECT_EQ([item attributedTitle], nil);
  EXPECT_EQ([item attributedContentText], nil);
  EXPECT_EQ([item attachments], nil);
  EXPECT_EQ([item userInfo], nil);
}

TEST_F(ExtensionItem, KeepsCopiesOfWhatItIsGiven) {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  NSMutableArray *const attachments = [NSMutableArray arrayWithObject:@"one"];
  NSMutableDictionary *const information = [NSMutableDictionary dictionaryWithObject:@"TRUE" forKey:@"result"];
  [item setAttachments:attachments];
  [item setUserInfo:information];
  [attachments addObject:@"two"];
  [information removeAllObjects];
  EXPECT_EQ([[item attachments] count], 1u);
  EXPECT_EQ(text([[item userInfo] objectForKey:@"result"]), "TRUE");
}

TEST_F(ExtensionItem, MayBeSetToWhatItHoldsAlready) {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:@{@"a" : @"b"}];
  [item setUserInfo:[item userInfo]];
  EXPECT_EQ(text([[item userInfo] objectForKey:@"a"]), "b");
}

TEST_F(ExtensionItem, ACopyIsAnItemOfItsOwn) {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:@{@"result" : @"TRUE"}];
  [item setAttributedTitle:[[[NSAttributedString alloc] initWithString:@"Title"] autorelease]];
  NSExtensionItem *const copy = [[item copy] autorelease];
  [item setUserInfo:nil];
  EXPECT_NE(copy, item);
  EXPECT_EQ(text([[copy userInfo] objectForKey:@"result"]), "TRUE");
  EXPECT_EQ(text([[copy attributedTitle] string]), "Title");
}

TEST_F(ExtensionItem, GoesThroughAnArchiveWithAllThatItHolds) {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  NSData *const icon = [NSData dataWithBytes:"\0\1\2" length:3];
  [item setUserInfo:@{@"result" : @"TRUE", @"icon" : icon}];
  [item setAttributedTitle:[[[NSAttributedString alloc] initWithString:@"Title"] autorelease]];
  [item setAttributedContentText:[[[NSAttributedString alloc] initWithString:@"Text"] autorelease]];
  [item setAttachments:@[ [[[NSItemProvider alloc] initWithItem:@{@"FK" : icon} typeIdentifier:@"a.b"] autorelease] ]];
  NSExtensionItem *const read = throughArchive(item);
  ASSERT_TRUE([read isKindOfClass:[NSExtensionItem class]]);
  EXPECT_EQ(text([[read userInfo] objectForKey:@"result"]), "TRUE");
  EXPECT_TRUE([[[read userInfo] objectForKey:@"icon"] isEqual:icon]);
  EXPECT_EQ(text([[read attributedTitle] string]), "Title");
  EXPECT_EQ(text([[read attributedContentText] string]), "Text");
  ASSERT_EQ([[read attachments] count], 1u);
  EXPECT_EQ(text([[[read attachments] objectAtIndex:0] registeredTypeIdentifiers]), text(@[ @"a.b" ]));
}

TEST_F(ExtensionItem, AnEmptyOneGoesThroughAnArchive) {
  NSExtensionItem *const read = throughArchive([[[NSExtensionItem alloc] init] autorelease]);
  ASSERT_TRUE([read isKindOfClass:[NSExtensionItem class]]);
  EXPECT_EQ([read userInfo], nil);
}

TEST_F(ExtensionItem, AndItsProviderSayThatTheyAreArchivedSecurely) {
  EXPECT_TRUE([NSExtensionItem supportsSecureCoding]);
  EXPECT_TRUE([NSItemProvider supportsSecureCoding]);
  EXPECT_TRUE([NSExtensionItem conformsToProtocol:NSProtocolFromString(@"NSSecureCoding")]);
  EXPECT_TRUE([NSItemProvider conformsToProtocol:NSProtocolFromString(@"NSSecureCoding")]);
  EXPECT_TRUE([NSExtensionItem conformsToProtocol:NSProtocolFromString(@"NSCopying")]);
}

} // namespace
