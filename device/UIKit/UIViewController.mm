#import "Presentation.h"
#import "UIViewInternal.h"

#include "container/Settings.h"

@implementation UIViewController

- (instancetype)init {
  return [self initWithNibName:nil bundle:nil];
}

- (instancetype)initWithNibName:(NSString *)nibName bundle:(NSBundle *)bundle {
  (void)nibName;
  (void)bundle;
  if ((self = [super init]) && qvdevice::isSystemVersionAtLeast("13"))
    _modalPresentationStyle = UIModalPresentationAutomatic;
  return self;
}

- (void)dealloc {
  [_view qvdevice_setController:nil];
  [_view release];
  [_title release];
  if (_presentedViewController) _presentedViewController->_presentingViewController = nil;
  [_presentedViewController release];
  [_popoverPresentationController qvdevice_setPresentedViewController:nil];
  [_popoverPresentationController release];
  [super dealloc];
}

@synthesize title = _title;
@synthesize presentedViewController = _presentedViewController;
@synthesize presentingViewController = _presentingViewController;
@synthesize modalPresentationStyle = _modalPresentationStyle;

- (UIPopoverPresentationController *)popoverPresentationController {
  if (!_popoverPresentationController && [self modalPresentationStyle] == UIModalPresentationPopover) {
    _popoverPresentationController = [[UIPopoverPresentationController alloc] init];
    [_popoverPresentationController qvdevice_setPresentedViewController:self];
  }
  return _popoverPresentationController;
}

- (UIResponder *)nextResponder {
  UIView *const above = [_view superview];
  return above ? (UIResponder *)above : (UIResponder *)_presentingViewController;
}

- (BOOL)isViewLoaded {
  return _view != nil;
}

- (void)loadView {
  UIView *const view = [[UIView alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
  [view setAutoresizingMask:UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight];
  [self setView:view];
  [view release];
}

- (void)loadViewIfNeeded {
  if (_view) return;
  [self loadView];
  [self viewDidLoad];
}

- (UIView *)view {
  [self loadViewIfNeeded];
  return _view;
}

- (void)setView:(UIView *)view {
  if (view == _view) return;
  [_view qvdevice_setController:nil];
  [view retain];
  [_view release];
  _view = view;
  [view qvdevice_setController:self];
}

- (void)viewDidLoad {
}

- (void)viewWillAppear:(BOOL)animated {
  (void)animated;
}

- (void)viewDidAppear:(BOOL)animated {
  (void)animated;
}

- (void)viewWillDisappear:(BOOL)animated {
  (void)animated;
}

- (void)viewDidDisappear:(BOOL)animated {
  (void)animated;
}

- (void)didReceiveMemoryWarning {
}

- (void)presentViewController:(UIViewController *)controller
                     animated:(BOOL)animated
                   completion:(void (^)(void))completion {
  if (!controller)
    [NSException raise:NSInvalidArgumentException
                format:@"Application tried to present a nil modal view controller on target %@.", self];
  if (controller->_presentingViewController)
    [NSException
         raise:NSInvalidArgumentException
        format:@"Application tried to present modally a view controller %@ that is already being presented by %@.",
               controller, controller->_presentingViewController];
  if (_presentedViewController) {
    NSLog(@"Attempt to present %@ on %@ which is already presenting %@", controller, self, _presentedViewController);
    return;
  }
  [[self retain] autorelease];
  _presentedViewController = [[controller retain] retain];
  [controller autorelease];
  controller->_presentingViewController = self;
  UIWindow *const window = [[self view] window];
  UIViewController *const below = [self qvdevice_outermost];
  const BOOL covers = window && [controller qvdevice_coversWhatIsBelow];
  [[controller view] setFrame:window ? [window bounds] : [[self view] frame]];
  if (covers) [below qvdevice_beginToDisappear:animated];
  [controller qvdevice_beginToAppear:animated];
  // It may have been taken away again by what it was told.
  if (_presentedViewController != controller) return;
  [window addSubview:[controller view]];
  if (covers) [[below view] removeFromSuperview];
  [controller qvdevice_endToAppear:animated];
  if (covers && _presentedViewController == controller) [below qvdevice_endToDisappear:animated];
  if (completion) completion();
}

- (void)dismissViewControllerAnimated:(BOOL)animated completion:(void (^)(void))completion {
  // Asked of the one that is shown, it is the one that showed it who answers.
  if (!_presentedViewController && _presentingViewController) {
    [_presentingViewController dismissViewControllerAnimated:animated completion:completion];
    return;
  }
  if (_presentedViewController) [self qvdevice_takeAwayPresented:animated];
  if (completion) completion();
}

- (void)qvdevice_takeAwayPresented:(BOOL)animated {
  [[self retain] autorelease];
  // The uppermost first.
  NSMutableArray *const going = [NSMutableArray array];
  for (UIViewController *each = _presentedViewController; each; each = each->_presentedViewController)
    [going insertObject:each atIndex:0];
  UIWindow *const window = [[[going objectAtIndex:0] view] window];
  UIViewController *const below = [self qvdevice_outermost];
  const BOOL comesBack = window && ![[below view] window];
  for (UIViewController *each in going)
    [each qvdevice_beginToDisappear:animated];
  if (comesBack) {
    [[below view] setFrame:[window bounds]];
    [below qvdevice_beginToAppear:animated];
    [window addSubview:[below view]];
  }
  for (UIViewController *each in going) {
    [[each view] removeFromSuperview];
    UIViewController *const by = each->_presentingViewController;
    each->_presentingViewController = nil;
    by->_presentedViewController = nil;
    [each autorelease]; // as it was retained when it was presented
  }
  if (comesBack) [below qvdevice_endToAppear:animated];
  for (UIViewController *each in going)
    [each qvdevice_endToDisappear:animated];
}

// The one that fills the place that this one is a part of.
- (UIViewController *)qvdevice_outermost {
  UIViewController *each = self;
  while (each->_navigationController)
    each = each->_navigationController;
  return each;
}

- (BOOL)prefersStatusBarHidden {
  return NO;
}

@end

@implementation UIViewController (UINavigationControllerItem)

- (UINavigationController *)navigationController {
  return _navigationController;
}

@end

@implementation UIViewController (QVDevicePresentation)

- (BOOL)qvdevice_coversWhatIsBelow {
  switch ([self modalPresentationStyle]) {
  case UIModalPresentationFullScreen:
  case UIModalPresentationCurrentContext:
    return YES;
  default:
    return NO;
  }
}

- (NSArray *)qvdevice_shownFromHere {
  NSMutableArray *const shown = [NSMutableArray arrayWithObject:self];
  for (UIViewController *each = self; each; each = [[each qvdevice_top] presentedViewController]) {
    if (each == self) continue;
    if ([each qvdevice_coversWhatIsBelow]) [shown removeAllObjects];
    [shown addObject:each];
  }
  return shown;
}

// The one of a container's that presents for it.
- (UIViewController *)qvdevice_top {
  if (_presentedViewController || ![self isKindOfClass:[UINavigationController class]]) return self;
  UIViewController *const top = [static_cast<UINavigationController *>(self) topViewController];
  return top ? top : self;
}

- (void)qvdevice_beginToAppear:(BOOL)animated {
  if ((_onScreen || _appearing) && [_view window]) return;
  _appearing = YES;
  [self viewWillAppear:animated];
}

- (void)qvdevice_endToAppear:(BOOL)animated {
  if (!_appearing) return;
  _appearing = NO;
  _onScreen = YES;
  [self viewDidAppear:animated];
}

- (void)qvdevice_beginToDisappear:(BOOL)animated {
  if (!_onScreen && !_appearing) return;
  [self viewWillDisappear:animated];
}

- (void)qvdevice_endToDisappear:(BOOL)animated {
  if (!_onScreen && !_appearing) return;
  _onScreen = _appearing = NO;
  [self viewDidDisappear:animated];
}

@end

@implementation UIViewController (QVDeviceInternal)

- (void)qvdevice_setNavigationController:(UINavigationController *)controller {
  _navigationController = controller;
}

@end
