// A library that is in the process before ours and already has, on UIApplication, two methods of the names that ours
// would give its replacements, with another signature.
#import <UIKit/UIKit.h>

@interface UIApplication (TakenNames)
@end
@implementation UIApplication (TakenNames)
- (float)sb_setDelegate:(id)delegate {
  return 0;
}
- (float)sb__setDelegate:(id)delegate assumeOwnership:(BOOL)assumeOwnership {
  return 0;
}
@end
