#import "Rotation.h"

@implementation UIViewController (UIViewControllerRotation)

+ (void)attemptRotationToDeviceOrientation {
  [[UIApplication sharedApplication] qvdevice_followDeviceOrientation];
}

- (BOOL)shouldAutorotate {
  return YES;
}

- (UIInterfaceOrientationMask)supportedInterfaceOrientations {
  return [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad
             ? UIInterfaceOrientationMaskAll
             : UIInterfaceOrientationMaskAllButUpsideDown;
}

- (BOOL)shouldAutorotateToInterfaceOrientation:(UIInterfaceOrientation)orientation {
  return orientation == UIInterfaceOrientationPortrait;
}

- (void)willRotateToInterfaceOrientation:(UIInterfaceOrientation)orientation duration:(NSTimeInterval)duration {
  (void)orientation;
  (void)duration;
}

- (void)didRotateFromInterfaceOrientation:(UIInterfaceOrientation)orientation {
  (void)orientation;
}

- (UIInterfaceOrientation)interfaceOrientation {
  return [[UIApplication sharedApplication] statusBarOrientation];
}

@end
