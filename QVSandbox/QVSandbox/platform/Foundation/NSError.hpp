#pragma once

#include "NSDictionary.hpp"

extern "C" objc_object* qvsbLocalizedDescriptionKey QVSB_SYMBOL(NSLocalizedDescriptionKey);

namespace qvsb {

inline NSString NSLocalizedDescriptionKey() { return NSString(qvsbLocalizedDescriptionKey); }

/// An out-parameter is a pointer to a handle, which may be null: `NSError*`.
class NSError : public NSObject {
  QVSB_HANDLE(NSError, NSObject)
  QVSB_CLASS_METHOD(NSError, errorWithDomain_code_userInfo, "errorWithDomain:code:userInfo:", NSString, NSInteger,
                    NSDictionary)
  QVSB_METHOD(NSString, localizedDescription, "localizedDescription")
};

} // namespace qvsb
