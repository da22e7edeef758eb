#import "ExtensionRoot.h"

#import <UIKit/UINavigationController.h>

namespace {

UIViewController *root;
NSExtensionContext *rootContext;

} // namespace

void QVDeviceSetExtensionRoot(UIViewController *controller, NSExtensionContext *context) {
  root = controller;
  rootContext = context;
}

UIViewController *QVDeviceExtensionRoot(void) { return root; }

@implementation UIViewController (NSExtensionAdditions)

- (NSExtensionContext *)extensionContext {
  for (UIViewController *each = self; each;) {
    if (each == root) return rootContext;
    UIViewController *const around = [each navigationController];
    each = around ? around : [each presentingViewController];
  }
  return nil;
}

@end
