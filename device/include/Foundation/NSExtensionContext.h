// In place of Debian's, which does nothing.
#pragma once

#define _NSExtensionContext_h_GNUSTEP_BASE_INCLUDE

#import <Foundation/NSObject.h>

@class NSArray, NSError, NSString;

/// Of requests that an extension refuses or fails.
GS_EXPORT NSString *const NSExtensionErrorDomain;

typedef NSInteger NSExtensionErrorCode;
enum : NSInteger {
  /// No extension has that identifier.
  NSExtensionNotFoundError = 1,
  /// The extension made no view controller.
  NSExtensionViewControllerError = 2,
  /// The extension cancelled and gave no reason.
  NSExtensionCancelledError = 3,
};

/// The key of an array of dictionaries in an error's information.
GS_EXPORT NSString *const NSExtensionItemsAndErrorsKey;

/// What an extension knows of the request that it serves. Any thread.
@interface NSExtensionContext : NSObject {
@private
  NSArray *_inputItems;
}

/// Of NSExtensionItem.
@property (nonatomic, readonly) NSArray *inputItems;

/// Answers the request with NSExtensionItem objects. The handler is called on another thread when the answer is on its
/// way.
- (void)completeRequestReturningItems:(NSArray *)items completionHandler:(void (^)(BOOL expired))completionHandler;
- (void)cancelRequestWithError:(NSError *)error;

@end
