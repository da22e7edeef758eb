#import <Foundation/Foundation.h>

// A platform class for installers to hook, of which a subclass per test is used up.
@interface QVHookTarget : NSObject
@end
@implementation QVHookTarget
- (NSInteger)first {
  return 1;
}
- (NSInteger)second {
  return 2;
}
- (NSInteger)third {
  return 3;
}
+ (NSInteger)ofClass {
  return 4;
}
@end
