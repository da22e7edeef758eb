#import "UIViewInternal.h"

@implementation UINavigationController

- (instancetype)initWithNibName:(NSString *)nibName bundle:(NSBundle *)bundle {
  if ((self = [super initWithNibName:nibName bundle:bundle])) _controllers = [[NSMutableArray alloc] init];
  return self;
}

- (instancetype)initWithRootViewController:(UIViewController *)rootViewController {
  if ((self = [self initWithNibName:nil bundle:nil])) [self pushViewController:rootViewController animated:NO];
  return self;
}

- (void)dealloc {
  for (UIViewController *each in _controllers)
    [each qvdevice_setNavigationController:nil];
  [_controllers release];
  [super dealloc];
}

- (NSArray *)viewControllers {
  return [[_controllers copy] autorelease];
}

- (UIViewController *)topViewController {
  return [_controllers lastObject];
}

- (UIViewController *)visibleViewController {
  for (UIViewController *each in @[ self, [self topViewController] ?: self ])
    if (UIViewController *const presented = [each presentedViewController]) return presented;
  return [self topViewController];
}

- (void)loadView {
  [super loadView];
  [self qvdevice_fit:[self topViewController]];
}

- (void)qvdevice_fit:(UIViewController *)controller {
  if (!controller) return;
  UIView *const view = [self view];
  [[controller view] setFrame:[view bounds]];
  [view addSubview:[controller view]];
}

- (void)setViewControllers:(NSArray *)viewControllers {
  [self setViewControllers:viewControllers animated:NO];
}

- (void)qvdevice_check:(NSArray *)controllers {
  for (UIViewController *each in controllers)
    if ([each isKindOfClass:[UINavigationController class]])
      [NSException raise:NSInvalidArgumentException format:@"Pushing a navigation controller is not supported"];
  if ([[NSSet setWithArray:controllers] count] != [controllers count])
    [NSException raise:NSInvalidArgumentException
                format:@"Pushing the same view controller instance more than once is not supported (%@)",
                       [controllers lastObject]];
}

// Every way of going from one list of controllers to the next.
- (void)setViewControllers:(NSArray *)viewControllers animated:(BOOL)animated {
  [self qvdevice_check:viewControllers];
  UIViewController *const before = [[[self topViewController] retain] autorelease];
  UIViewController *const after = [viewControllers lastObject];
  for (UIViewController *each in _controllers)
    if ([viewControllers indexOfObjectIdenticalTo:each] == NSNotFound) [each qvdevice_setNavigationController:nil];
  [_controllers setArray:viewControllers ? viewControllers : [NSArray array]];
  for (UIViewController *each in _controllers)
    [each qvdevice_setNavigationController:self];
  if (before == after || ![self isViewLoaded]) return;
  if (_appeared) {
    [before viewWillDisappear:animated];
    [after viewWillAppear:animated];
  }
  if ([before isViewLoaded]) [[before view] removeFromSuperview];
  [self qvdevice_fit:after];
  if (_appeared) {
    [before viewDidDisappear:animated];
    [after viewDidAppear:animated];
  }
}

- (void)pushViewController:(UIViewController *)viewController animated:(BOOL)animated {
  if (!viewController)
    [NSException raise:NSInvalidArgumentException
                format:@"Application tried to push a nil view controller on target %@.", self];
  [self setViewControllers:[_controllers arrayByAddingObject:viewController] animated:animated];
}

- (UIViewController *)popViewControllerAnimated:(BOOL)animated {
  if ([_controllers count] < 2) return nil;
  UIViewController *const below = [_controllers objectAtIndex:[_controllers count] - 2];
  return [[self popToViewController:below animated:animated] lastObject];
}

- (NSArray *)popToViewController:(UIViewController *)viewController animated:(BOOL)animated {
  const NSUInteger index = [_controllers indexOfObjectIdenticalTo:viewController];
  if (index == NSNotFound)
    [NSException raise:NSInternalInconsistencyException
                format:@"Tried to pop to a view controller that doesn't exist."];
  const NSUInteger count = index + 1;
  NSArray *const popped = [_controllers subarrayWithRange:NSMakeRange(count, [_controllers count] - count)];
  [self setViewControllers:[_controllers subarrayWithRange:NSMakeRange(0, count)] animated:animated];
  return popped;
}

- (NSArray *)popToRootViewControllerAnimated:(BOOL)animated {
  if ([_controllers count] < 2) return nil;
  return [self popToViewController:[_controllers objectAtIndex:0] animated:animated];
}

- (void)viewWillAppear:(BOOL)animated {
  [super viewWillAppear:animated];
  [[self topViewController] viewWillAppear:animated];
}

- (void)viewDidAppear:(BOOL)animated {
  [super viewDidAppear:animated];
  _appeared = YES;
  [[self topViewController] viewDidAppear:animated];
}

- (void)viewWillDisappear:(BOOL)animated {
  [super viewWillDisappear:animated];
  [[self topViewController] viewWillDisappear:animated];
}

- (void)viewDidDisappear:(BOOL)animated {
  [super viewDidDisappear:animated];
  _appeared = NO;
  [[self topViewController] viewDidDisappear:animated];
}

@end
