#import "ExtensionMessages.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <vector>

namespace qvdevice {

namespace {

constexpr std::size_t kLengthSize = 4;
constexpr std::size_t kLongest = std::size_t{64} << 20;

NSSet *knownClasses() {
  static NSSet *const all = [[NSSet alloc] initWithArray:@[
    @"NSArray",
    @"NSMutableArray",
    @"NSDictionary",
    @"NSMutableDictionary",
    @"NSSet",
    @"NSMutableSet",
    @"NSString",
    @"NSMutableString",
    @"NSData",
    @"NSMutableData",
    @"NSNumber",
    @"NSDecimalNumber",
    @"NSDate",
    @"NSURL",
    @"NSUUID",
    @"NSNull",
    @"NSError",
    @"NSAttributedString",
    @"NSMutableAttributedString",
    @"NSExtensionItem",
    @"NSItemProvider"
  ]];
  return all;
}

/// Looks through an archive before its reader does, which takes a good deal for granted: every reference leads to an
/// object, none leads back to where it came from, and only known classes are named.
class ArchiveCheck {
public:
  explicit ArchiveCheck(NSArray *objects) : objects_(objects), states_([objects count], State::kUnseen) {}

  bool isSafe(id object, int depth = 0) {
    if (depth > kDeepest) return false;
    if ([object isKindOfClass:[NSArray class]]) {
      for (id each in object)
        if (!isSafe(each, depth + 1)) return false;
      return true;
    }
    if (![object isKindOfClass:[NSDictionary class]]) return true;
    if (id const reference = [object objectForKey:@"CF$UID"]) return leadsToSafe(reference, depth);
    if (id const name = [object objectForKey:@"$classname"]; name && ![knownClasses() containsObject:name])
      return false;
    for (id key in object)
      if (!isSafe([object objectForKey:key], depth + 1)) return false;
    return true;
  }

private:
  enum class State { kUnseen, kOpen, kSafe };
  static constexpr int kDeepest = 200;

  bool leadsToSafe(id reference, int depth) {
    if (![reference isKindOfClass:[NSNumber class]]) return false;
    const std::size_t index = [reference unsignedLongLongValue];
    if (index >= states_.size() || states_[index] == State::kOpen) return false;
    if (states_[index] == State::kSafe) return true;
    states_[index] = State::kOpen;
    const bool safe = isSafe([objects_ objectAtIndex:index], depth + 1);
    states_[index] = State::kSafe;
    return safe;
  }

  NSArray *objects_;
  std::vector<State> states_;
};

id readArchive(NSData *data) {
  id const archive = [NSPropertyListSerialization propertyListWithData:data options:NSPropertyListImmutable format:NULL
                                                                 error:NULL];
  if (![archive isKindOfClass:[NSDictionary class]]) return nil;
  id const objects = [archive objectForKey:@"$objects"];
  if (![objects isKindOfClass:[NSArray class]] || ![[archive objectForKey:@"$top"] isKindOfClass:[NSDictionary class]])
    return nil;
  if (!ArchiveCheck(objects).isSafe([archive objectForKey:@"$top"])) return nil;
  return [NSKeyedUnarchiver unarchiveObjectWithData:data];
}

NSDictionary *messageIn(NSData *data) {
  id object = nil;
  @try {
    object = readArchive(data);
  } @catch (NSException *) {
    return nil;
  }
  if (![object isKindOfClass:[NSDictionary class]]) return nil;
  return [[object objectForKey:@"message"] isKindOfClass:[NSString class]] ? object : nil;
}

} // namespace

NSData *bytesOfMessage(NSDictionary *message) {
  NSData *const archive = [NSKeyedArchiver archivedDataWithRootObject:message];
  const auto length = static_cast<std::uint32_t>([archive length]);
  const std::array<unsigned char, kLengthSize> head{
      static_cast<unsigned char>(length >> 24), static_cast<unsigned char>(length >> 16),
      static_cast<unsigned char>(length >> 8), static_cast<unsigned char>(length)};
  NSMutableData *const bytes = [NSMutableData dataWithBytes:head.data() length:head.size()];
  [bytes appendData:archive];
  return bytes;
}

bool willBeUnderstood(NSData *bytes) {
  const NSRange archive = NSMakeRange(kLengthSize, [bytes length] - kLengthSize);
  return archive.length <= kLongest && messageIn([bytes subdataWithRange:archive]) != nil;
}

bool sendBytes(int socket, NSData *bytes) {
  const char *next = static_cast<const char *>([bytes bytes]);
  for (std::size_t left = [bytes length]; left > 0;) {
    const ssize_t sent = ::send(socket, next, left, MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return false;
    next += sent;
    left -= static_cast<std::size_t>(sent);
  }
  return true;
}

MessageReader::Result MessageReader::next(NSDictionary **message) {
  if (received_.size() < kLengthSize) return Result::kMore;
  std::size_t length = 0;
  for (std::size_t i = 0; i < kLengthSize; ++i)
    length = length << 8 | static_cast<unsigned char>(received_[i]);
  if (length > kLongest) return Result::kMalformed;
  if (received_.size() < kLengthSize + length) return Result::kMore;
  *message = messageIn([NSData dataWithBytes:received_.data() + kLengthSize length:length]);
  received_.erase(0, kLengthSize + length);
  return *message ? Result::kMessage : Result::kMalformed;
}

bool areExtensionItems(id object) {
  if (![object isKindOfClass:[NSArray class]]) return false;
  for (id each in object)
    if (![each isKindOfClass:[NSExtensionItem class]]) return false;
  return true;
}

} // namespace qvdevice
