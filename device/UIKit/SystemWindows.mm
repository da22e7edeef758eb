#import "SystemWindows.h"

#import "UIViewInternal.h"

namespace {

const UIWindowLevel keyboardsLevel = 10000000;

} // namespace

@implementation UITextEffectsWindow

+ (UITextEffectsWindow *)sharedTextEffectsWindow {
  static UITextEffectsWindow *const window = [[self alloc] init];
  return window;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) [self setWindowLevel:keyboardsLevel];
  return self;
}

- (BOOL)qvdevice_canBecomeKey {
  return NO;
}

- (UIView *)hitTest:(CGPoint)point withEvent:(UIEvent *)event {
  (void)point;
  (void)event;
  return nil;
}

- (BOOL)qvdevice_decidesOnRotation {
  return NO;
}

@end

@implementation _UIAlertControllerShimPresenterWindow

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) [self setWindowLevel:UIWindowLevelAlert];
  return self;
}

// The alert turns with what is below it.
- (BOOL)qvdevice_decidesOnRotation {
  return NO;
}

@end
