#pragma once

#include "../platform/Foundation/NSString.hpp"

namespace qvsb {

/// Reads strings one after the other, as the entries of a list that an administrator wrote, which may hold anything.
/// That they are nearly always of one class is what makes it cheap: what there is to know of a class is found out once,
/// and its methods are called without being looked up for each string.
class StringReader {
public:
  /// Makes `object` the string that is read. Gives NO, and nothing may be read, when it is no string.
  BOOL open(Object object);

  NSUInteger length() const;
  void getCharacters(unichar* buffer, NSRange range) const;

private:
  id string_ = nullptr;
  Class class_;
  NSUInteger (*length_)(id, SEL) = nullptr;
  void (*getCharacters_)(id, SEL, unichar*, NSRange) = nullptr;
};

} // namespace qvsb
