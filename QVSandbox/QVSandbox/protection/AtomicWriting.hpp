// The two writing methods that NSArray, NSData and NSDictionary have in common, word for word.
#pragma once

#include "../platform/Foundation/NSURL.hpp"
#include "../platform/objc/selector.hpp"

namespace qvsb {

BOOL sb_writeToFile_atomically(NSObject self, SEL, NSString path, BOOL atomically);
BOOL sb_writeToURL_atomically(NSObject self, SEL, NSURL url, BOOL atomically);

} // namespace qvsb
