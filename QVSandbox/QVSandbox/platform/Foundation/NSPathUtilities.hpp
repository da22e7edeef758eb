#pragma once

#include "NSArray.hpp"

extern "C" objc_object* qvsbSearchPathForDirectoriesInDomains(qvsb::NSUInteger directory, qvsb::NSUInteger domainMask,
                                                              qvsb::BOOL expandTilde)
    QVSB_SYMBOL(NSSearchPathForDirectoriesInDomains);

namespace qvsb {

inline constexpr NSUInteger NSDocumentDirectory = 9;
inline constexpr NSUInteger NSUserDomainMask = 1;

/// Paths as NSString, nearest first.
inline NSArray NSSearchPathForDirectoriesInDomains(NSUInteger directory, NSUInteger domainMask, BOOL expandTilde) {
  return NSArray(qvsbSearchPathForDirectoriesInDomains(directory, domainMask, expandTilde));
}

} // namespace qvsb
