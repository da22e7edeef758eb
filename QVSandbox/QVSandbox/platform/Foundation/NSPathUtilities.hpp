#pragma once

#include "NSArray.hpp"
#include "NSString.hpp"

extern "C" {
objc_object* qvsbHomeDirectory() QVSB_SYMBOL(NSHomeDirectory);
objc_object* qvsbTemporaryDirectory() QVSB_SYMBOL(NSTemporaryDirectory);
objc_object* qvsbSearchPathForDirectoriesInDomains(qvsb::NSUInteger directory, qvsb::NSUInteger domainMask,
                                                   qvsb::BOOL expandTilde)
    QVSB_SYMBOL(NSSearchPathForDirectoriesInDomains);
}

namespace qvsb {

inline constexpr NSUInteger NSLibraryDirectory = 5;
inline constexpr NSUInteger NSDocumentDirectory = 9;
inline constexpr NSUInteger NSUserDomainMask = 1;

/// The app's container.
inline NSString NSHomeDirectory() { return NSString(qvsbHomeDirectory()); }
/// May end with a slash.
inline NSString NSTemporaryDirectory() { return NSString(qvsbTemporaryDirectory()); }

/// Paths as NSString, nearest first.
inline NSArray NSSearchPathForDirectoriesInDomains(NSUInteger directory, NSUInteger domainMask, BOOL expandTilde) {
  return NSArray(qvsbSearchPathForDirectoriesInDomains(directory, domainMask, expandTilde));
}

} // namespace qvsb
