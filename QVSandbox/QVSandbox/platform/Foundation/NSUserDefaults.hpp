#pragma once

#include "NSArray.hpp"
#include "NSString.hpp"

namespace qvsb {

class NSUserDefaults : public NSObject {
  QVSB_HANDLE(NSUserDefaults, NSObject)
  QVSB_CLASS_METHOD(NSUserDefaults, standardUserDefaults, "standardUserDefaults")
  /// Names as NSString. Not every release of the platform answers to it.
  QVSB_METHOD(NSArray, persistentDomainNames, "persistentDomainNames")
  QVSB_METHOD(void, removePersistentDomainForName, "removePersistentDomainForName:", NSString)
};

} // namespace qvsb
