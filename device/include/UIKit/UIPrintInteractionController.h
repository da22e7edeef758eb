#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

@class UIPrintInteractionController;

typedef void (^UIPrintInteractionCompletionHandler)(UIPrintInteractionController *controller, BOOL completed,
                                                    NSError *error);

/// Prints one item. On this device the user agrees to what is presented at once, and paper is a file of the device's.
/// Main thread only.
@interface UIPrintInteractionController : NSObject {
@private
  id _printingItem;
}

/// Whether there is anything to print with.
+ (BOOL)isPrintingAvailable;
+ (UIPrintInteractionController *)sharedPrintController;

/// A text (NSString), its bytes (NSData), or a file (NSURL).
@property (nonatomic, copy) id printingItem;

/// NO when nothing is printed.
- (BOOL)presentAnimated:(BOOL)animated completionHandler:(UIPrintInteractionCompletionHandler)completion;
- (void)dismissAnimated:(BOOL)animated;

@end
