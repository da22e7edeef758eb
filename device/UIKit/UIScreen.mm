#import <UIKit/UIScreen.h>

#import <UIKit/UIDevice.h>

@implementation UIScreen

+ (UIScreen *)mainScreen {
  static UIScreen *const screen = [[UIScreen alloc] init];
  return screen;
}

+ (NSArray *)screens {
  return [NSArray arrayWithObject:[self mainScreen]];
}

- (CGRect)bounds {
  const bool pad = [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad;
  return pad ? CGRectMake(0, 0, 820, 1180) : CGRectMake(0, 0, 390, 844);
}

- (CGFloat)scale {
  return [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad ? 2 : 3;
}

- (CGRect)nativeBounds {
  const CGSize points = [self bounds].size;
  return CGRectMake(0, 0, points.width * [self scale], points.height * [self scale]);
}

@end
