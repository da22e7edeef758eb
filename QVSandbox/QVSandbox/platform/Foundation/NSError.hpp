#pragma once

#include "NSDictionary.hpp"

extern "C" {
extern objc_object* qvsbLocalizedDescriptionKey QVSB_SYMBOL(NSLocalizedDescriptionKey);
extern objc_object* qvsbCocoaErrorDomain QVSB_SYMBOL(NSCocoaErrorDomain);
}

namespace qvsb {

inline NSString NSLocalizedDescriptionKey() { return NSString(qvsbLocalizedDescriptionKey); }

inline NSString NSCocoaErrorDomain() { return NSString(qvsbCocoaErrorDomain); }

/// Of that domain: the connection to another process was interrupted.
inline constexpr NSInteger NSXPCConnectionInterrupted = 4097;

/// An out-parameter is a pointer to a handle, which may be null: `NSError*`.
class NSError : public NSObject {
  QVSB_HANDLE(NSError, NSObject)
  QVSB_CLASS_METHOD(NSError, errorWithDomain_code_userInfo, "errorWithDomain:code:userInfo:", NSString, NSInteger,
                    NSDictionary)
  QVSB_METHOD(NSString, localizedDescription, "localizedDescription")
};

} // namespace qvsb
