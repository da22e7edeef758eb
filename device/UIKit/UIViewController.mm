#import "UIViewInternal.h"

@implementation UIViewController

- (instancetype)init {
  return [self initWithNibName:nil bundle:nil];
}

- (instancetype)initWithNibName:(NSString *)nibName bundle:(NSBundle *)bundle {
  (void)nibName;
  (void)bundle;
  return [super init];
}

- (void)dealloc {
  [_view qvdevice_setController:nil];
  [_view release];
  [_title release];
  [_presentedViewController release];
  [super dealloc];
}

@synthesize title = _title;
@synthesize presentedViewController = _presentedViewController;
@synthesize presentingViewController = _presentingViewController;

- (UIResponder *)nextResponder {
  UIView *const above = [_view superview];
  return above ? (UIResponder *)above : (UIResponder *)_presentingViewController;
}

- (BOOL)isViewLoaded {
  return _view != nil;
}

- (void)loadView {
  UIView *const view = [[UIView alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
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
  _presentedViewController = [controller retain];
  controller->_presentingViewController = self;
  UIWindow *const window = [[self view] window];
  [[controller view] setFrame:window ? [window bounds] : [[self view] frame]];
  [controller viewWillAppear:animated];
  [window addSubview:[controller view]];
  [controller viewDidAppear:animated];
  if (completion) completion();
}

- (void)dismissViewControllerAnimated:(BOOL)animated completion:(void (^)(void))completion {
  // Asked of the one that is shown, it is the one that showed it who answers.
  if (!_presentedViewController && _presentingViewController) {
    [_presentingViewController dismissViewControllerAnimated:animated completion:completion];
    return;
  }
  UIViewController *const presented = [_presentedViewController autorelease];
  _presentedViewController = nil;
  if (presented) {
    [presented viewWillDisappear:animated];
    [[presented view] removeFromSuperview];
    presented->_presentingViewController = nil;
    [presented viewDidDisappear:animated];
  }
  if (completion) completion();
}

- (BOOL)shouldAutorotate {
  return YES;
}

- (BOOL)prefersStatusBarHidden {
  return NO;
}

- (UIInterfaceOrientationMask)supportedInterfaceOrientations {
  return [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad
             ? UIInterfaceOrientationMaskAll
             : UIInterfaceOrientationMaskAllButUpsideDown;
}

@end

@implementation UIViewController (UINavigationControllerItem)

- (UINavigationController *)navigationController {
  return _navigationController;
}

@end

@implementation UIViewController (QVDeviceInternal)

- (void)qvdevice_setNavigationController:(UINavigationController *)controller {
  _navigationController = controller;
}

@end
