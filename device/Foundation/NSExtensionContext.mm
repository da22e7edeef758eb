#import <Foundation/Foundation.h>

#include "ReplacesFoundation.h"

NSString *const NSExtensionErrorDomain = @"NSExtensionErrorDomain";

@interface NSExtensionContext (QVDevice)
@end

// A context that belongs to no request has nothing to work on, and nobody to answer.
@implementation NSExtensionContext (QVDevice)

- (void)dealloc {
  [_inputItems release];
  [super dealloc];
}

- (NSArray *)inputItems {
  return _inputItems ? _inputItems : @[];
}

- (void)setInputItems:(NSArray *)items {
  NSArray *const copy = [items copy];
  [_inputItems release];
  _inputItems = copy;
}

- (void)completeRequestReturningItems:(NSArray *)items completionHandler:(void (^)(BOOL expired))completionHandler {
  (void)items;
  (void)completionHandler;
}

- (void)cancelRequestWithError:(NSError *)error {
  (void)error;
}

@end
