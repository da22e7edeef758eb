// Putting a finished item where an older one may be.
#pragma once

#import <Foundation/Foundation.h>

namespace qvdevice {

// Moves the item at `made` to `place` in one step; what was at `place` is gone afterwards. Answers 0 or an errno, and
// then `made` is gone and `place` is as it was.
int replaceItem(NSString *place, NSString *made);

} // namespace qvdevice
