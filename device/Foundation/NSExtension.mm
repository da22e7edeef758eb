#import <Foundation/NSExtension.h>

#import <dispatch/dispatch.h>

#import "InstalledExtensions.h"

@implementation NSExtension

+ (instancetype)extensionWithIdentifier:(NSString *)identifier error:(NSError **)error {
  NSDictionary *const information = QVDeviceInstalledExtension(identifier);
  if (!information) {
    NSString *const reason = [NSString stringWithFormat:@"No extension has the identifier \"%@\".", identifier];
    if (error)
      *error = [NSError errorWithDomain:NSExtensionErrorDomain code:NSExtensionNotFoundError
                               userInfo:@{NSLocalizedDescriptionKey : reason}];
    return nil;
  }
  NSExtension *const extension = [[[self alloc] init] autorelease];
  extension->_identifier = [identifier copy];
  extension->_attributes = [[information objectForKey:@"NSExtension"] copy];
  return extension;
}

- (void)dealloc {
  [_identifier release];
  [_attributes release];
  [_requestInterruptionBlock release];
  [_requestCancellationBlock release];
  [_requestCompletionBlock release];
  [_requests release];
  [super dealloc];
}

@synthesize identifier = _identifier;
@synthesize attributes = _attributes;
@synthesize requestInterruptionBlock = _requestInterruptionBlock;
@synthesize requestCancellationBlock = _requestCancellationBlock;
@synthesize requestCompletionBlock = _requestCompletionBlock;

- (void)instantiateViewControllerWithInputItems:(NSArray *)inputItems
                              connectionHandler:(void (^)(id<NSCopying> requestIdentifier, UIViewController *controller,
                                                          NSError *error))handler {
  (void)inputItems;
  NSError *const error =
      [NSError errorWithDomain:NSExtensionErrorDomain code:NSExtensionViewControllerError
                      userInfo:@{NSLocalizedDescriptionKey : @"There is nobody to start the extension."}];
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
    handler([NSUUID UUID], nil, error);
  });
}

- (int)pidForRequestIdentifier:(id<NSCopying>)requestIdentifier {
  (void)requestIdentifier;
  return 0;
}

@end
