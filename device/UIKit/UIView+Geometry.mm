#import "UIViewInternal.h"

namespace {

// What is fainter than this takes no touches.
const CGFloat faintest = 0.01;

// The point of `view`, in the coordinates of the screen; where no window is above, in those of the uppermost view's
// surroundings.
CGPoint outermost(UIView *view, CGPoint point) {
  for (; view; view = [view superview]) {
    point.x += [view frame].origin.x - [view bounds].origin.x;
    point.y += [view frame].origin.y - [view bounds].origin.y;
  }
  return point;
}

} // namespace

@implementation UIView (UIViewGeometry)

- (BOOL)pointInside:(CGPoint)point withEvent:(UIEvent *)event {
  (void)event;
  const CGRect bounds = [self bounds];
  return point.x >= CGRectGetMinX(bounds) && point.x < CGRectGetMaxX(bounds) && point.y >= CGRectGetMinY(bounds) &&
         point.y < CGRectGetMaxY(bounds);
}

- (UIView *)hitTest:(CGPoint)point withEvent:(UIEvent *)event {
  if ([self isHidden] || ![self isUserInteractionEnabled] || [self alpha] < faintest) return nil;
  if (![self pointInside:point withEvent:event]) return nil;
  for (UIView *subview in [[self subviews] reverseObjectEnumerator])
    if (UIView *const hit = [subview hitTest:[subview convertPoint:point fromView:self] withEvent:event]) return hit;
  return self;
}

- (CGPoint)convertPoint:(CGPoint)point toView:(UIView *)view {
  if (!view) {
    // Without a window there is still the uppermost view to tell from.
    UIView *top = self;
    while ([top superview])
      top = [top superview];
    view = top;
  }
  const CGPoint from = outermost(self, point), origin = outermost(view, CGPointZero);
  return CGPointMake(from.x - origin.x, from.y - origin.y);
}

- (CGPoint)convertPoint:(CGPoint)point fromView:(UIView *)view {
  const CGPoint here = [self convertPoint:CGPointZero toView:view];
  return CGPointMake(point.x - here.x, point.y - here.y);
}

- (CGRect)convertRect:(CGRect)rect toView:(UIView *)view {
  rect.origin = [self convertPoint:rect.origin toView:view];
  return rect;
}

- (CGRect)convertRect:(CGRect)rect fromView:(UIView *)view {
  rect.origin = [self convertPoint:rect.origin fromView:view];
  return rect;
}

@end
