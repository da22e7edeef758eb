#pragma once

#include "../platform/Foundation/NSString.hpp"

namespace qvsb {

/// Reads strings one after the other, as the entries of a list that an administrator wrote, which may hold anything.
/// That they are nearly always of one class is what makes it cheap: what there is to know of a class is found out once,
/// and its methods are called without being looked up for each string.
class StringReader {
public:
  /// Makes `object` the string that is read. Gives NO, and nothing may be read, when it is no string.
  BOOL open(Object object) {
    if (!object || (classOf(object) != class_ && !learn(object))) {
      return NO;
    }
    string_ = object.raw();
    return YES;
  }

  NSUInteger length() const { return length_(string_, "length"_sel); }

  void getCharacters(unichar* buffer, NSRange range) const {
    getCharacters_(string_, "getCharacters:range:"_sel, buffer, range);
  }

  /// Copies the string's units as bytes, with a zero behind them, into `size` bytes, more than the string is long.
  /// Gives NO unless the string keeps its text in that very form; then this is the quickest way to read it.
  BOOL getLatin1(char* buffer, NSUInteger size) const {
    return fastestEncoding_(string_, "fastestEncoding"_sel) == NSISOLatin1StringEncoding &&
           getCString_(string_, "getCString:maxLength:encoding:"_sel, buffer, size, NSISOLatin1StringEncoding);
  }

private:
  BOOL learn(Object object);

  id string_ = nullptr;
  Class class_;
  NSUInteger (*length_)(id, SEL) = nullptr;
  void (*getCharacters_)(id, SEL, unichar*, NSRange) = nullptr;
  NSStringEncoding (*fastestEncoding_)(id, SEL) = nullptr;
  BOOL (*getCString_)(id, SEL, char*, NSUInteger, NSStringEncoding) = nullptr;
};

} // namespace qvsb
