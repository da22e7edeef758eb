#import "UIRemoteViewController.h"

#import "Foundation/ExtensionRequest.h"

@implementation _UIRemoteViewController

- (instancetype)initWithRequest:(QVDeviceExtensionRequest *)request {
  if ((self = [super initWithNibName:nil bundle:nil])) _request = [request retain];
  return self;
}

- (void)dealloc {
  [_request end];
  [_request release];
  [super dealloc];
}

@end
