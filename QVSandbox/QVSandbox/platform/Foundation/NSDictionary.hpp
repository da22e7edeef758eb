#pragma once

#include "NSString.hpp"

namespace qvsb {

class NSMutableDictionary;

class NSDictionary : public NSObject {
  QVSB_HANDLE(NSDictionary, NSObject)
  QVSB_CLASS_METHOD(NSDictionary, dictionaryWithObject_forKey, "dictionaryWithObject:forKey:", Object, Object)
  QVSB_METHOD(NSUInteger, count, "count")
  QVSB_METHOD(Object, objectForKey, "objectForKey:", Object)
  QVSB_METHOD(Object, objectForKeyedSubscript, "objectForKeyedSubscript:", Object)
  QVSB_METHOD(Object, valueForKey, "valueForKey:", NSString)

  /// `mutableCopy`; nil of nil.
  Strong<NSMutableDictionary> mutableCopy() const;
};

class NSMutableDictionary : public NSDictionary {
  QVSB_HANDLE(NSMutableDictionary, NSDictionary)
  QVSB_CLASS_METHOD(NSMutableDictionary, dictionary, "dictionary")
  QVSB_METHOD(void, setObject_forKey, "setObject:forKey:", Object, Object)
  /// A nil value removes what the key stands for.
  QVSB_METHOD(void, setValue_forKey, "setValue:forKey:", Object, NSString)
  QVSB_METHOD(void, removeObjectForKey, "removeObjectForKey:", Object)
};

inline Strong<NSMutableDictionary> NSDictionary::mutableCopy() const {
  return Strong<NSMutableDictionary>::adopt(send<NSMutableDictionary>(*this, "mutableCopy"_sel));
}

} // namespace qvsb
