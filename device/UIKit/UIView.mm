#import "UIViewInternal.h"

#import "FirstResponder.h"

#import <QuartzCore/CALayer.h>

@implementation UIView

- (instancetype)init {
  return [self initWithFrame:CGRectZero];
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super init])) {
    _frame = frame;
    _alpha = 1;
    _opaque = YES;
    _userInteractionEnabled = YES;
    _needsLayout = YES;
    _subviews = [[NSMutableArray alloc] init];
  }
  return self;
}

- (void)dealloc {
  for (UIView *subview in _subviews)
    subview->_superview = nil;
  [_subviews release];
  [_backgroundColor release];
  [_layer release];
  [super dealloc];
}

@synthesize alpha = _alpha;
@synthesize tag = _tag;
@synthesize autoresizingMask = _autoresizingMask;
@synthesize hidden = _hidden;
@synthesize opaque = _opaque;
@synthesize userInteractionEnabled = _userInteractionEnabled;
@synthesize backgroundColor = _backgroundColor;
@synthesize superview = _superview;

- (CALayer *)layer {
  if (!_layer) _layer = [[CALayer alloc] init];
  return _layer;
}

- (UIResponder *)nextResponder {
  return _controller ? (UIResponder *)_controller : (UIResponder *)_superview;
}

// What is on no window cannot be written into, and stops being it when it leaves its window.
- (BOOL)becomeFirstResponder {
  return [self window] && [super becomeFirstResponder];
}

- (CGRect)frame {
  return _frame;
}

- (void)setFrame:(CGRect)frame {
  const CGSize before = _frame.size;
  _frame = frame;
  if (CGSizeEqualToSize(frame.size, before)) return;
  [self setNeedsLayout];
  if (!_keepsSubviewsSizes) [self qvdevice_resizeSubviewsFrom:before];
}

- (BOOL)autoresizesSubviews {
  return !_keepsSubviewsSizes;
}

- (void)setAutoresizesSubviews:(BOOL)autoresizes {
  _keepsSubviewsSizes = !autoresizes;
}

- (CGRect)bounds {
  CGRect bounds = {_boundsOrigin, _frame.size};
  return bounds;
}

// A change of size leaves the centre where it is.
- (void)setBounds:(CGRect)bounds {
  const CGPoint center = [self center];
  _boundsOrigin = bounds.origin;
  [self setFrame:CGRectMake(center.x - bounds.size.width / 2, center.y - bounds.size.height / 2, bounds.size.width,
                            bounds.size.height)];
}

- (CGPoint)center {
  return CGPointMake(CGRectGetMidX(_frame), CGRectGetMidY(_frame));
}

- (void)setCenter:(CGPoint)center {
  _frame.origin = CGPointMake(center.x - _frame.size.width / 2, center.y - _frame.size.height / 2);
}

- (NSArray *)subviews {
  return [[_subviews copy] autorelease];
}

- (UIWindow *)window {
  for (UIView *view = self; view; view = view->_superview)
    if ([view isKindOfClass:[UIWindow class]]) return (UIWindow *)view;
  return nil;
}

- (void)addSubview:(UIView *)view {
  [self insertSubview:view atIndex:(NSInteger)[_subviews count]];
}

- (void)insertSubview:(UIView *)view atIndex:(NSInteger)index {
  if (!view) return;
  if ([self isDescendantOfView:view])
    [NSException raise:NSInvalidArgumentException format:@"Can't add %@ as subview of its own descendant", view];
  [[view retain] autorelease];
  if (view->_superview == self) {
    [_subviews removeObjectIdenticalTo:view];
    [_subviews insertObject:view atIndex:MIN((NSUInteger)index, [_subviews count])];
    return;
  }
  UIWindow *const before = [view window], *const after = [self window];
  if (before && before != after) [view endEditing:YES];
  if (before != after) [view willMoveToWindow:after];
  [view willMoveToSuperview:self];
  if (view->_superview) {
    [view->_superview willRemoveSubview:view];
    [view->_superview->_subviews removeObjectIdenticalTo:view];
  }
  [_subviews insertObject:view atIndex:MIN((NSUInteger)index, [_subviews count])];
  view->_superview = self;
  [view didMoveToSuperview];
  if (before != after) [view didMoveToWindow];
  [self didAddSubview:view];
  [self setNeedsLayout];
}

- (void)removeFromSuperview {
  if (!_superview) return;
  [[self retain] autorelease];
  [self endEditing:YES];
  UIWindow *const before = [self window];
  [_superview willRemoveSubview:self];
  if (before) [self willMoveToWindow:nil];
  [self willMoveToSuperview:nil];
  UIView *const from = _superview;
  _superview = nil;
  [from->_subviews removeObjectIdenticalTo:self];
  [self didMoveToSuperview];
  if (before) [self didMoveToWindow];
}

- (void)bringSubviewToFront:(UIView *)view {
  if (view && view->_superview == self) [self insertSubview:view atIndex:(NSInteger)[_subviews count] - 1];
}

- (void)sendSubviewToBack:(UIView *)view {
  if (view && view->_superview == self) [self insertSubview:view atIndex:0];
}

- (BOOL)isDescendantOfView:(UIView *)view {
  for (UIView *each = self; each; each = each->_superview)
    if (each == view) return YES;
  return NO;
}

- (UIView *)viewWithTag:(NSInteger)tag {
  if (_tag == tag) return self;
  for (UIView *subview in _subviews)
    if (UIView *const found = [subview viewWithTag:tag]) return found;
  return nil;
}

- (void)didAddSubview:(UIView *)subview {
  (void)subview;
}

- (void)willRemoveSubview:(UIView *)subview {
  (void)subview;
}

- (void)willMoveToSuperview:(UIView *)superview {
  (void)superview;
}

- (void)didMoveToSuperview {
}

- (void)willMoveToWindow:(UIWindow *)window {
  (void)window;
}

- (void)didMoveToWindow {
}

- (void)setNeedsLayout {
  _needsLayout = YES;
}

- (void)layoutIfNeeded {
  if (_needsLayout) {
    _needsLayout = NO;
    [self layoutSubviews];
  }
  for (UIView *subview in [self subviews])
    [subview layoutIfNeeded];
}

- (void)layoutSubviews {
}

// Nothing is drawn on a device without a display.
- (void)setNeedsDisplay {
}

@end

@implementation UIView (QVDeviceInternal)

- (void)qvdevice_setController:(UIViewController *)controller {
  _controller = controller;
}

@end
