// What another process sends is not believed.
#import "Pooled.h"

#import "Foundation/ExtensionMessages.h"

#include <random>

using qvdevice::MessageReader;
using Result = MessageReader::Result;

@interface LocalStranger : NSObject <NSCoding>
@end

static int strangersRead;

@implementation LocalStranger
- (void)encodeWithCoder:(NSCoder *)coder {
  (void)coder;
}
- (id)initWithCoder:(NSCoder *)coder {
  (void)coder;
  ++strangersRead;
  return [self init];
}
@end

namespace {

class ExtensionMessages : public Pooled {
protected:
  static std::string bytes(NSDictionary *message) {
    NSData *const data = qvdevice::bytesOfMessage(message);
    return {static_cast<const char *>([data bytes]), [data length]};
  }

  static Result resultOf(const std::string &bytes) {
    MessageReader reader;
    reader.feed(bytes.data(), bytes.size());
    NSDictionary *message = nil;
    return reader.next(&message);
  }

  static NSExtensionItem *item() {
    NSExtensionItem *const made = [[[NSExtensionItem alloc] init] autorelease];
    [made setUserInfo:@{
      @"result" : @"TRUE",
      @"list" : @[ [NSNumber numberWithInt:1], [NSDate date], [NSNull null] ],
      @"url" : [NSURL URLWithString:@"https://example.com/"]
    }];
    [made setAttachments:@[ [[[NSItemProvider alloc] initWithItem:@{@"FK" : [NSData data]}
                                                   typeIdentifier:@"a.b"] autorelease] ]];
    return made;
  }

  static std::string framed(const std::string &archive) {
    const std::size_t length = archive.size();
    return {std::string{static_cast<char>(length >> 24), static_cast<char>(length >> 16),
                        static_cast<char>(length >> 8), static_cast<char>(length)} +
            archive};
  }
};

TEST_F(ExtensionMessages, AreReadInTheOrderInWhichTheyCameHoweverTheyAreCut) {
  const std::string stream = bytes(@{@"message" : @"one", @"items" : @[ item() ]}) + bytes(@{@"message" : @"two"});
  MessageReader reader;
  std::string read;
  for (const char byte : stream) {
    reader.feed(&byte, 1);
    NSDictionary *message = nil;
    if (reader.next(&message) == Result::kMessage) read += text([message objectForKey:@"message"]) + " ";
  }
  EXPECT_EQ(read, "one two ");
}

TEST_F(ExtensionMessages, NeedTheirName) {
  EXPECT_EQ(resultOf(bytes(@{@"items" : @[]})), Result::kMalformed);
  EXPECT_EQ(resultOf(bytes(@{@"message" : [NSNumber numberWithInt:1]})), Result::kMalformed);
}

TEST_F(ExtensionMessages, ThatAreLongerThanAnyAreRefusedBeforeTheyCome) {
  EXPECT_EQ(resultOf("\x04"), Result::kMore);
  EXPECT_EQ(resultOf({"\x04\0\0\0", 4}), Result::kMore);
  EXPECT_EQ(resultOf({"\x04\0\0\1", 4}), Result::kMalformed);
}

TEST_F(ExtensionMessages, BringNoOtherClassesToLife) {
  const std::string message = bytes(@{@"message" : @"one", @"x" : [[[LocalStranger alloc] init] autorelease]});
  EXPECT_EQ(resultOf(message), Result::kMalformed);
  EXPECT_EQ(strangersRead, 0);
}

// As text, so that references can be changed.
std::string asText(const std::string &archive) {
  NSData *const data = [NSData dataWithBytes:archive.data() length:archive.size()];
  id const list = [NSPropertyListSerialization propertyListWithData:data options:NSPropertyListImmutable format:NULL
                                                              error:NULL];
  NSData *const text = [NSPropertyListSerialization dataWithPropertyList:list format:NSPropertyListXMLFormat_v1_0
                                                                 options:0
                                                                   error:NULL];
  return {static_cast<const char *>([text bytes]), [text length]};
}

TEST_F(ExtensionMessages, WhoseReferencesLeadElsewhereNeverEndTheProcess) {
  const std::string good = asText(bytes(@{@"message" : @"one", @"items" : @[ item() ]}).substr(4));
  ASSERT_EQ(resultOf(framed(good)), Result::kMessage);
  const std::string mark = "<key>CF$UID</key>";
  int changed = 0;
  int refused = 0;
  for (std::size_t at = good.find(mark); at != std::string::npos; at = good.find(mark, at + 1)) {
    const std::size_t start = good.find("<integer>", at) + std::string("<integer>").size();
    for (const char *other : {"0", "1", "2", "3", "9", "999999", "-1", "18446744073709551615"}) {
      std::string bad = good;
      bad.replace(start, good.find('<', start) - start, other);
      if (resultOf(framed(bad)) == Result::kMalformed) ++refused;
      ++changed;
    }
  }
  EXPECT_GT(changed, 50);
  EXPECT_GT(refused, changed / 2);
}

TEST_F(ExtensionMessages, ThatAreCutShortAreRefused) {
  const std::string good = bytes(@{@"message" : @"one", @"items" : @[ item() ]}).substr(4);
  for (std::size_t length = 0; length < good.size() - 20; length += 7)
    EXPECT_EQ(resultOf(framed(good.substr(0, length))), Result::kMalformed) << length;
}

TEST_F(ExtensionMessages, WithBytesChangedNeverEndTheProcess) {
  const std::string good = bytes(@{@"message" : @"one", @"items" : @[ item() ]}).substr(4);
  std::mt19937 random(20261121);
  int refused = 0;
  for (int round = 0; round < 3000; ++round) {
    NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
    std::string bad = good;
    for (unsigned changes = 1 + random() % 4; changes > 0; --changes)
      bad[random() % bad.size()] = static_cast<char>(random() % 3 == 0 ? random() : '0' + random() % 10);
    if (resultOf(framed(bad)) == Result::kMalformed) ++refused;
    [inner drain];
  }
  EXPECT_GT(refused, 1000);
}

} // namespace
