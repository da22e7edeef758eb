#include "StringReader.hpp"

namespace qvsb {

namespace {

// SAFETY: asked of NSString and its subclasses only, whose methods have these signatures.
template <class R, class... A> void find(R (*&function)(id, SEL, A...), Class cls, SEL selector) {
  function = reinterpret_cast<R (*)(id, SEL, A...)>(class_getMethodImplementation(cls.rawClass(), selector.raw));
}

} // namespace

BOOL StringReader::open(Object object) {
  if (!object) {
    return NO;
  }
  const Class cls = classOf(object);
  if (cls != class_) {
    if (!NSObject::from(object).isKindOfClass(NSString::classObject())) {
      return NO;
    }
    find(length_, cls, "length"_sel);
    find(getCharacters_, cls, "getCharacters:range:"_sel);
    class_ = cls;
  }
  string_ = object.raw();
  return YES;
}

NSUInteger StringReader::length() const { return length_(string_, "length"_sel); }

void StringReader::getCharacters(unichar* buffer, NSRange range) const {
  getCharacters_(string_, "getCharacters:range:"_sel, buffer, range);
}

} // namespace qvsb
