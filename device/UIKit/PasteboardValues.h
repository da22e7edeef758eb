// Values of pasteboard items as bytes, so that another process finds them as they were.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace qvdevice {

/// Puts the value's bytes behind those in `bytes`. A value is a string, data, a URL, a number, a date, or an array or a
/// dictionary with strings for keys of such values. Answers nil, or what about it no pasteboard takes.
NSString *encodePasteboardValue(id value, std::string &bytes);

/// The value, immutable through and through; nil when the bytes are no value's.
id decodePasteboardValue(std::string_view bytes);

} // namespace qvdevice
