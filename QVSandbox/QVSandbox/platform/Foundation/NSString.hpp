#pragma once

#include "NSObject.hpp"
#include "NSRange.hpp"

namespace qvsb {

/// Its type is part of method encodings, and the two Foundations differ.
#if QVSB_APPLE_RUNTIME
using NSStringEncoding = NSUInteger;
#else
using NSStringEncoding = unsigned int;
#endif
inline constexpr NSStringEncoding NSUTF8StringEncoding = 4;
inline constexpr NSStringEncoding NSISOLatin1StringEncoding = 5;

enum class NSComparisonResult : NSInteger { orderedAscending = -1, orderedSame = 0, orderedDescending = 1 };

/// How texts are compared and searched; 0 for plain texts.
using NSStringCompareOptions = NSUInteger;
/// Digits count as the number that they make.
inline constexpr NSStringCompareOptions NSNumericSearch = 64;
inline constexpr NSStringCompareOptions NSRegularExpressionSearch = 1024;

/// A UTF-16 code unit, which is what a string counts in.
using unichar = char16_t;

class NSString : public NSObject {
  QVSB_HANDLE(NSString, NSObject)
  QVSB_CLASS_METHOD(NSString, stringWithUTF8String, "stringWithUTF8String:", const char*)
  QVSB_METHOD(Object, initWithBytes_length_encoding, "initWithBytes:length:encoding:", const void*, NSUInteger,
              NSStringEncoding)
  QVSB_METHOD(const char*, UTF8String, "UTF8String")
  QVSB_METHOD(BOOL, boolValue, "boolValue")
  QVSB_METHOD(NSUInteger, length, "length")
  QVSB_METHOD(void, getCharacters_range, "getCharacters:range:", unichar*, NSRange)
  QVSB_METHOD(NSComparisonResult, compare_options, "compare:options:", NSString, NSStringCompareOptions)
  /// The form in which the string can be read without being converted.
  QVSB_METHOD(NSStringEncoding, fastestEncoding, "fastestEncoding")
  QVSB_METHOD(BOOL, getCString_maxLength_encoding, "getCString:maxLength:encoding:", char*, NSUInteger,
              NSStringEncoding)
  /// The first occurrence. An expression that is none, and the empty text, are nowhere.
  QVSB_METHOD(NSRange, rangeOfString_options, "rangeOfString:options:", NSString, NSStringCompareOptions)
  QVSB_METHOD(BOOL, hasPrefix, "hasPrefix:", NSString)
  QVSB_METHOD(BOOL, isEqualToString, "isEqualToString:", NSString)
  QVSB_METHOD(NSString, stringByReplacingOccurrencesOfString_withString,
              "stringByReplacingOccurrencesOfString:withString:", NSString, NSString)
  QVSB_METHOD(NSString, lastPathComponent, "lastPathComponent")
  QVSB_METHOD(NSString, stringByDeletingLastPathComponent, "stringByDeletingLastPathComponent")
  QVSB_METHOD(NSString, stringByAppendingString, "stringByAppendingString:", NSString)
  QVSB_METHOD(NSString, stringByAppendingPathComponent, "stringByAppendingPathComponent:", NSString)

  /// `stringWithFormat:`; arguments are handles, numbers and C strings.
  template <class... Tail> static NSString stringWithFormat(NSString format, Tail... tail) {
    return VariadicMessage<NSString(NSString)>::send(classObject(), "stringWithFormat:"_sel, format, tail...);
  }
};

namespace detail {
/// An NSString that is never released: whichever thread comes second gives its own back and takes the first one's.
NSString publishConstant(std::atomic<id>& slot, const char* text, std::size_t length);
template <FixedString Text> inline constinit std::atomic<id> stringConstant{nullptr};
} // namespace detail

/// A string constant: `"Sandboxing NSData"_ns`. Made when first used, immortal, UTF-8.
template <FixedString Text> inline NSString operator""_ns() {
  auto& slot = detail::stringConstant<Text>;
  if (const id made = slot.load(std::memory_order_acquire)) [[likely]] {
    return NSString(made);
  }
  return detail::publishConstant(slot, Text.text, Text.length);
}

/// The selector's name; nil for a null selector.
NSString NSStringFromSelector(SEL selector);
/// The class's name; nil for nil.
NSString NSStringFromClass(Class cls);

} // namespace qvsb
