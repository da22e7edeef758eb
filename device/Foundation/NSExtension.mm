#import <Foundation/NSExtension.h>

#import <dispatch/dispatch.h>

#import "ExtensionMessages.h"
#import "ExtensionRequest.h"
#import "InstalledExtensions.h"

namespace {

NSError *errorOf(NSExtensionErrorCode code, NSString *reason) {
  return [NSError errorWithDomain:NSExtensionErrorDomain code:code userInfo:@{NSLocalizedDescriptionKey : reason}];
}

/// The request's first message; nil, with the reason, when the items cannot be handed to another process.
NSData *beginning(NSUUID *request, NSArray *items, NSError **error) {
  if (!items) items = @[];
  if (!qvdevice::areExtensionItems(items)) {
    *error = errorOf(NSExtensionViewControllerError, @"The input items are not all extension items.");
    return nil;
  }
  @try {
    NSData *const message =
        qvdevice::bytesOfMessage(@{@"message" : @"begin", @"request" : [request UUIDString], @"items" : items});
    if (qvdevice::willBeUnderstood(message)) return message;
    *error = errorOf(NSExtensionViewControllerError, @"The input items hold what no extension can be given.");
    return nil;
  } @catch (NSException *exception) {
    NSString *const reason = [NSString stringWithFormat:@"The input items cannot be archived: %@", [exception reason]];
    *error = errorOf(NSExtensionViewControllerError, reason);
    return nil;
  }
}

} // namespace

@implementation NSExtension

+ (instancetype)extensionWithIdentifier:(NSString *)identifier error:(NSError **)error {
  NSDictionary *const information = QVDeviceInstalledExtension(identifier);
  if (!information) {
    if (error)
      *error = errorOf(NSExtensionNotFoundError,
                       [NSString stringWithFormat:@"No extension has the identifier \"%@\".", identifier]);
    return nil;
  }
  NSExtension *const extension = [[[self alloc] init] autorelease];
  extension->_identifier = [identifier copy];
  extension->_attributes = [[information objectForKey:@"NSExtension"] copy];
  extension->_requests = [[NSMutableDictionary alloc] init];
  return extension;
}

- (void)dealloc {
  for (id identifier in _requests)
    [[_requests objectForKey:identifier] end];
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
  QVDeviceExtensionRequest *const request = [[[QVDeviceExtensionRequest alloc] initWithExtension:self] autorelease];
  NSError *error = nil;
  // Now, and not on the request's thread: the items are the caller's.
  NSData *const message = beginning([request identifier], inputItems, &error);
  if (!message) {
    NSUUID *const identifier = [request identifier];
    // By way of the main thread, whose turn comes to its end first.
    dispatch_async(dispatch_get_main_queue(), ^{
      dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
        if (handler) handler(identifier, nil, error);
      });
    });
    return;
  }
  @synchronized(self) {
    [_requests setObject:request forKey:[request identifier]];
  }
  [request startWithMessage:message connectionHandler:handler];
}

- (int)pidForRequestIdentifier:(id<NSCopying>)requestIdentifier {
  if (!requestIdentifier) return 0;
  @synchronized(self) {
    return [[_requests objectForKey:requestIdentifier] pid];
  }
}

@end
