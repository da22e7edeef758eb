#import "PasteboardValues.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace qvdevice {

namespace {

// A value begins with its kind. Lengths and counts have eight bytes; numbers are the machine's own, since the bytes
// never leave it.
enum Kind : char {
  kText = 's',
  kData = 'd',
  kURL = 'u',
  kDate = 't',
  kBool = 'b',
  kInteger = 'i',
  kUnsigned = 'q',
  kReal = 'f',
  kArray = 'a',
  kDictionary = 'm',
};

/// Deeper than any app nests, and shallower than any stack.
constexpr int kDeepest = 200;

class Encoder {
public:
  explicit Encoder(std::string &bytes) : bytes_(bytes) {}

  NSString *value(id value, int depth) {
    if (depth > kDeepest) return @"a value that is nested too deep";
    if ([value isKindOfClass:[NSString class]]) return text(value);
    if ([value isKindOfClass:[NSData class]]) return run(kData, [value bytes], [value length]);
    if ([value isKindOfClass:[NSNumber class]]) return number(value);
    if ([value isKindOfClass:[NSDate class]]) return fixed(kDate, [value timeIntervalSinceReferenceDate]);
    if ([value isKindOfClass:[NSURL class]]) return url(value);
    if ([value isKindOfClass:[NSArray class]]) return array(value, depth);
    if ([value isKindOfClass:[NSDictionary class]]) return dictionary(value, depth);
    return [NSString stringWithFormat:@"a value of class %@", NSStringFromClass([value class])];
  }

private:
  template <class T> NSString *fixed(Kind kind, T number) {
    bytes_ += kind;
    bytes_.append(reinterpret_cast<const char *>(&number), sizeof number);
    return nil;
  }

  NSString *run(Kind kind, const void *start, std::uint64_t length) {
    fixed(kind, length);
    bytes_.append(static_cast<const char *>(start), length);
    return nil;
  }

  NSString *text(NSString *text) {
    NSData *const bytes = [text dataUsingEncoding:NSUTF8StringEncoding];
    return bytes ? run(kText, [bytes bytes], [bytes length]) : @"a text that is no Unicode";
  }

  NSString *url(NSURL *url) {
    NSString *const whole = [url absoluteString];
    if (![NSURL URLWithString:whole]) return @"a URL that cannot be written down";
    NSData *const bytes = [whole dataUsingEncoding:NSUTF8StringEncoding];
    return run(kURL, [bytes bytes], [bytes length]);
  }

  NSString *number(NSNumber *number) {
    switch (*[number objCType]) {
    case 'B':
    case 'C': // BOOL here; a number that is not one of the two is a number
      if ([number intValue] == 0 || [number intValue] == 1) return fixed(kBool, [number boolValue]);
      return fixed<std::int64_t>(kInteger, [number longLongValue]);
    case 'f':
    case 'd':
      return fixed(kReal, [number doubleValue]);
    case 'L':
    case 'Q':
      return fixed<std::uint64_t>(kUnsigned, [number unsignedLongLongValue]);
    default:
      return fixed<std::int64_t>(kInteger, [number longLongValue]);
    }
  }

  NSString *array(NSArray *array, int depth) {
    fixed<std::uint64_t>(kArray, [array count]);
    for (id each in array) {
      NSString *const problem = value(each, depth + 1);
      if (problem) return problem;
    }
    return nil;
  }

  NSString *dictionary(NSDictionary *dictionary, int depth) {
    fixed<std::uint64_t>(kDictionary, [dictionary count]);
    for (id key in dictionary) {
      if (![key isKindOfClass:[NSString class]]) return @"a dictionary with a key that is no string";
      NSString *problem = text(key);
      if (!problem) problem = value([dictionary objectForKey:key], depth + 1);
      if (problem) return problem;
    }
    return nil;
  }

  std::string &bytes_;
};

class Decoder {
public:
  explicit Decoder(std::string_view bytes) : rest_(bytes) {}

  bool atEnd() const { return rest_.empty(); }

  /// Nil when the bytes are no value's.
  id value(int depth) {
    char kind = 0;
    if (depth > kDeepest || !fixed(kind)) return nil;
    switch (kind) {
    case kText:
      return string();
    case kData:
      return data();
    case kURL: {
      NSString *const text = string();
      return text ? [NSURL URLWithString:text] : nil;
    }
    case kDate:
      return number<double>(^(double time) {
        return [NSDate dateWithTimeIntervalSinceReferenceDate:time];
      });
    case kBool:
      return number<BOOL>(^(BOOL flag) {
        return [NSNumber numberWithBool:flag];
      });
    case kInteger:
      return number<std::int64_t>(^(std::int64_t integer) {
        return [NSNumber numberWithLongLong:integer];
      });
    case kUnsigned:
      return number<std::uint64_t>(^(std::uint64_t integer) {
        return [NSNumber numberWithUnsignedLongLong:integer];
      });
    case kReal:
      return number<double>(^(double real) {
        return [NSNumber numberWithDouble:real];
      });
    case kArray:
      return array(depth);
    case kDictionary:
      return dictionary(depth);
    default:
      return nil;
    }
  }

private:
  template <class T> bool fixed(T &into) {
    if (rest_.size() < sizeof into) return false;
    std::memcpy(&into, rest_.data(), sizeof into);
    rest_.remove_prefix(sizeof into);
    return true;
  }

  template <class T> id number(id (^make)(T)) {
    T value{};
    return fixed(value) ? make(value) : nil;
  }

  bool run(std::string_view &into) {
    std::uint64_t length = 0;
    if (!fixed(length) || length > rest_.size()) return false;
    into = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return true;
  }

  NSString *string() {
    std::string_view bytes;
    if (!run(bytes)) return nil;
    return [[[NSString alloc] initWithBytes:bytes.data() length:bytes.size()
                                   encoding:NSUTF8StringEncoding] autorelease];
  }

  NSData *data() {
    std::string_view bytes;
    return run(bytes) ? [NSData dataWithBytes:bytes.data() length:bytes.size()] : nil;
  }

  /// The number of entries, as far as the bytes that are left could hold them.
  bool count(std::uint64_t &into) { return fixed(into) && into <= rest_.size(); }

  NSArray *array(int depth) {
    std::uint64_t left = 0;
    if (!count(left)) return nil;
    std::vector<id> entries;
    for (; left > 0; --left) {
      id const entry = value(depth + 1);
      if (!entry) return nil;
      entries.push_back(entry);
    }
    return [NSArray arrayWithObjects:entries.data() count:entries.size()];
  }

  NSDictionary *dictionary(int depth) {
    std::uint64_t left = 0;
    if (!count(left)) return nil;
    std::vector<id> keys, values;
    for (; left > 0; --left) {
      id const key = value(kDeepest);
      id const entry = value(depth + 1);
      if (![key isKindOfClass:[NSString class]] || !entry) return nil;
      keys.push_back(key);
      values.push_back(entry);
    }
    return [NSDictionary dictionaryWithObjects:values.data() forKeys:keys.data() count:keys.size()];
  }

  std::string_view rest_;
};

} // namespace

NSString *encodePasteboardValue(id value, std::string &bytes) { return Encoder(bytes).value(value, 0); }

id decodePasteboardValue(std::string_view bytes) {
  Decoder decoder(bytes);
  id const value = decoder.value(0);
  return decoder.atEnd() ? value : nil;
}

} // namespace qvdevice
