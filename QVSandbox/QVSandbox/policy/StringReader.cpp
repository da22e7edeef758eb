#include "StringReader.hpp"

namespace qvsb {

namespace {

// SAFETY: asked of NSString and its subclasses only, whose methods have these signatures.
template <class R, class... A> void find(R (*&function)(id, SEL, A...), Class cls, SEL selector) {
  function = reinterpret_cast<R (*)(id, SEL, A...)>(class_getMethodImplementation(cls.rawClass(), selector.raw));
}

} // namespace

/// Finds out what there is to know of the object's class. Gives NO when it is no string.
BOOL StringReader::learn(Object object) {
  if (!NSObject::from(object).isKindOfClass(NSString::classObject())) {
    return NO;
  }
  const Class cls = classOf(object);
  find(length_, cls, "length"_sel);
  find(getCharacters_, cls, "getCharacters:range:"_sel);
  find(fastestEncoding_, cls, "fastestEncoding"_sel);
  find(getCString_, cls, "getCString:maxLength:encoding:"_sel);
  class_ = cls;
  return YES;
}

} // namespace qvsb
