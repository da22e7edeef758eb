#import <UIKit/UIPrintInteractionController.h>

#import "WaysOut.h"

#include "container/Settings.h"

@implementation UIPrintInteractionController

+ (BOOL)isPrintingAvailable {
  return qvdevice::settings().printingAvailable;
}

+ (UIPrintInteractionController *)sharedPrintController {
  static UIPrintInteractionController *const shared = [[UIPrintInteractionController alloc] init];
  return shared;
}

- (void)dealloc {
  [_printingItem release];
  [super dealloc];
}

@synthesize printingItem = _printingItem;

- (BOOL)presentAnimated:(BOOL)animated completionHandler:(UIPrintInteractionCompletionHandler)completion {
  (void)animated;
  if (!QVDeviceItemBytes(_printingItem) || ![UIPrintInteractionController isPrintingAvailable]) return NO;
  QVDevicePrint(@[ _printingItem ]);
  if (completion) completion(self, YES, nil);
  return YES;
}

// There is nothing on the screen any more.
- (void)dismissAnimated:(BOOL)animated {
  (void)animated;
}

@end
