#pragma once

#include "NSObject.hpp"

namespace qvsb {

class NSArray : public NSObject {
  QVSB_HANDLE(NSArray, NSObject)
  QVSB_CLASS_METHOD(NSArray, array, "array")
  QVSB_CLASS_METHOD(NSArray, arrayWithObject, "arrayWithObject:", Object)
  QVSB_METHOD(NSUInteger, count, "count")
  QVSB_METHOD(Object, objectAtIndex, "objectAtIndex:", NSUInteger)
  QVSB_METHOD(Object, firstObject, "firstObject")
  QVSB_METHOD(Object, lastObject, "lastObject")
};

class NSMutableArray : public NSArray {
  QVSB_HANDLE(NSMutableArray, NSArray)
  QVSB_CLASS_METHOD(NSMutableArray, array, "array")
  QVSB_METHOD(void, addObject, "addObject:", Object)
  QVSB_CLASS_METHOD(NSMutableArray, arrayWithArray, "arrayWithArray:", NSArray)
  QVSB_METHOD(void, removeObjectAtIndex, "removeObjectAtIndex:", NSUInteger)
  QVSB_METHOD(void, removeAllObjects, "removeAllObjects")
};

} // namespace qvsb
