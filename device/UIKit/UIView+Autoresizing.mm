#import "UIViewInternal.h"

namespace {

// A view's place along one axis, from edge to edge of its superview: what lies before it, its extent, what lies behind.
struct Span {
  CGFloat before, extent, behind;
};

struct Gives {
  bool before, extent, behind;
};

// Shares a change out among the parts that give, in proportion to their sizes, or equally where these come to nothing.
Span stretched(Span span, Gives gives, CGFloat change) {
  const int parts = int{gives.before} + int{gives.extent} + int{gives.behind};
  if (parts == 0) return span;
  const CGFloat sum =
      (gives.before ? span.before : 0) + (gives.extent ? span.extent : 0) + (gives.behind ? span.behind : 0);
  const auto share = [&](CGFloat part) { return sum > 0 ? change * part / sum : change / parts; };
  return {span.before + (gives.before ? share(span.before) : 0), span.extent + (gives.extent ? share(span.extent) : 0),
          span.behind};
}

} // namespace

@implementation UIView (QVDeviceAutoresizing)

- (void)qvdevice_resizeSubviewsFrom:(CGSize)before {
  const CGSize now = [self bounds].size;
  for (UIView *subview in [self subviews]) {
    const UIViewAutoresizing mask = [subview autoresizingMask];
    const CGRect frame = [subview frame];
    const auto gives = [mask](UIViewAutoresizing flag) { return (mask & flag) != 0; };
    const Span across = stretched({frame.origin.x, frame.size.width, before.width - CGRectGetMaxX(frame)},
                                  {gives(UIViewAutoresizingFlexibleLeftMargin), gives(UIViewAutoresizingFlexibleWidth),
                                   gives(UIViewAutoresizingFlexibleRightMargin)},
                                  now.width - before.width);
    const Span down = stretched({frame.origin.y, frame.size.height, before.height - CGRectGetMaxY(frame)},
                                {gives(UIViewAutoresizingFlexibleTopMargin), gives(UIViewAutoresizingFlexibleHeight),
                                 gives(UIViewAutoresizingFlexibleBottomMargin)},
                                now.height - before.height);
    [subview setFrame:CGRectMake(across.before, down.before, across.extent, down.extent)];
  }
}

@end
