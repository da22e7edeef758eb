// Host apps' delegates of different make, as their makers would have written them.
#pragma once

#import <UIKit/UIKit.h>

#include <string>
#include <vector>

/// What the delegates have been told since the last clearHeard(), oldest first: each its method's selector, and what
/// was worth noting of the arguments.
const std::vector<std::string> &heard();
void clearHeard();
/// Adds to it; for whoever else has something to tell.
void hear(const std::string &what);

/// Has every method that is grafted over, and a window.
@interface QVFullHost : UIResponder <UIApplicationDelegate> {
@public
  UIWindow *_window;
  /// What its methods answer that answer something.
  BOOL answer;
  /// Called by its launch methods.
  void (*whenLaunching)();
}
@end

/// Inherits all of it but what becoming active is to it.
@interface QVHostBelow : QVFullHost
@end

/// Has nothing.
@interface QVEmptyHost : NSObject <UIApplicationDelegate>
@end

/// Has the two older generations of the method for URLs.
@interface QVOlderURLHost : NSObject <UIApplicationDelegate>
@end

/// Has the oldest only.
@interface QVOldestURLHost : NSObject <UIApplicationDelegate>
@end

/// Raises `trouble` from whatever is called.
@interface QVRaisingHost : NSObject <UIApplicationDelegate>
+ (NSException *)trouble;
@end

/// Stands in front of a delegate and passes for it in everything that can be asked.
@interface QVHostProxy : NSProxy <UIApplicationDelegate> {
  id _target;
}
- (instancetype)initWithTarget:(id)target;
@end
