#pragma once

#import <Zorbel/ZorbelDelegate.h>

#include <functional>
#include <string>
#include <vector>

/// Notes what the SDK tells it, "wrong thread: " in front of what does not come on the main thread.
@interface QVListeningDelegate : NSObject <ZorbelDelegate> {
@public
  std::vector<std::string> heard;
  /// Called after each note.
  std::function<void()> whenTold;
  /// What it answers to the SDK's questions.
  BOOL active, able;
}
@end
