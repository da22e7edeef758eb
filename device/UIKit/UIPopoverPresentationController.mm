#import "Presentation.h"

@implementation UIPresentationController

@synthesize presentedViewController = _presentedViewController;

- (UIViewController *)presentingViewController {
  return [_presentedViewController presentingViewController];
}

@end

@implementation UIPresentationController (QVDevicePresentation)

- (void)qvdevice_setPresentedViewController:(UIViewController *)controller {
  _presentedViewController = controller;
}

@end

@implementation UIPopoverPresentationController

- (void)dealloc {
  [_sourceView release];
  [_barButtonItem release];
  [super dealloc];
}

@synthesize sourceView = _sourceView;
@synthesize barButtonItem = _barButtonItem;
@synthesize sourceRect = _sourceRect;

- (CGRect)sourceRect {
  return CGRectEqualToRect(_sourceRect, CGRectZero) ? [_sourceView bounds] : _sourceRect;
}

@end
