#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>
#include <string>

namespace qvdevice {

/// The characters of a string that can be seen: at most `most`; half a character counts as one that nobody knows, and
/// of what has no look of its own only line breaks are left.
std::u32string charactersOf(NSString *string, std::size_t most = 2000);

} // namespace qvdevice
