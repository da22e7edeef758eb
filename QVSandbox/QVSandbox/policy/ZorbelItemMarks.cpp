#include "ZorbelItemMarks.hpp"

#include <algorithm>

#include "../platform/Foundation/NSDictionary.hpp"
#include "../platform/Foundation/NSFastEnumeration.hpp"
#include "../platform/Zorbel/Zorbel.hpp"

namespace qvsb {

namespace {

NSString placeholder() { return "%@"_ns; }

bool isString(Object object) { return NSObject::from(object).isKindOfClass(NSString::classObject()); }

/// The two replacements are all that makes an expression of a prefix. What the SDK relies on follows from them as they
/// are: the "*" repeats whatever stands before it, which after a "." is the dot and not any text, and every other
/// character that means something in an expression means that here. A prefix of which they make no expression at all
/// marks nothing.
NSString expressionFrom(NSString prefix) {
  return prefix.stringByReplacingOccurrencesOfString_withString(placeholder(), "*"_ns)
      .stringByReplacingOccurrencesOfString_withString("."_ns, "\\."_ns);
}

} // namespace

ZorbelItemMarks::ZorbelItemMarks() {
  forEach(Zorbel::zbPasteboardTypePrefixes(), [&](Object entry) {
    if (!isString(entry)) {
      return;
    }
    const auto prefix = NSString::from(entry);
    if (prefix.rangeOfString_options(placeholder(), NSStringCompareOptions{0}).location == NSNotFound) {
      marks_.push_back({prefix, 0});
    } else {
      marks_.push_back({expressionFrom(prefix), NSRegularExpressionSearch});
    }
  });
}

bool ZorbelItemMarks::areOn(Object item) {
  return NSObject::from(item).isKindOfClass(NSDictionary::classObject()) &&
         anyOf(NSObject::from(item), [&](Object type) { return isString(type) && areOnType(NSString::from(type)); });
}

bool ZorbelItemMarks::areOnType(NSString type) {
  if (unmarked_->member(type)) {
    return false;
  }
  if (marked_->member(type)) {
    return true;
  }
  const bool marked = std::ranges::any_of(marks_, [&](const Mark& mark) {
    return type.rangeOfString_options(mark.text.get(), mark.options).location == 0;
  });
  (marked ? marked_ : unmarked_)->addObject(type);
  return marked;
}

} // namespace qvsb
