// The kinds of objects that types stand for.
#pragma once

#import <Foundation/Foundation.h>

namespace qvdevice {

/// `value`, or what the bytes that it is mean under a type for texts or URLs.
id valueOfType(NSString *type, id value);

} // namespace qvdevice
