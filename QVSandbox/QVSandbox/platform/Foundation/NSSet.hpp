#pragma once

#include "NSArray.hpp"

namespace qvsb {

class NSSet : public NSObject {
  QVSB_HANDLE(NSSet, NSObject)
  QVSB_CLASS_METHOD(NSSet, setWithArray, "setWithArray:", NSArray)
  QVSB_METHOD(NSArray, allObjects, "allObjects")
  /// The member that is equal to an object, if there is one.
  QVSB_METHOD(Object, member, "member:", Object)
  QVSB_METHOD(BOOL, containsObject, "containsObject:", Object)
};

class NSMutableSet : public NSSet {
  QVSB_HANDLE(NSMutableSet, NSSet)
  QVSB_CLASS_METHOD(NSMutableSet, set, "set")
  QVSB_METHOD(void, addObject, "addObject:", Object)
  QVSB_METHOD(void, addObjectsFromArray, "addObjectsFromArray:", NSArray)
};

} // namespace qvsb
