#import "OpenInMenu.h"

#import "OtherApps.h"
#import "WaysOut.h"

#import <QVDevice/QVDevice.h>

namespace {
// On the screen; kept alive by nobody but its owner.
UIDocumentInteractionController *shown;
} // namespace

@implementation UIDocumentInteractionController

+ (UIDocumentInteractionController *)interactionControllerWithURL:(NSURL *)url {
  UIDocumentInteractionController *const controller = [[[self alloc] init] autorelease];
  [controller setURL:url];
  return controller;
}

- (void)dealloc {
  if (shown == self) shown = nil;
  [_URL release];
  [_offered release];
  [super dealloc];
}

@synthesize URL = _URL;
@synthesize delegate = _delegate;

- (BOOL)presentOpenInMenuFromRect:(CGRect)rect inView:(UIView *)view animated:(BOOL)animated {
  (void)rect, (void)view, (void)animated;
  NSArray *const before = _offered;
  _offered = [[self _applications:NO] copy];
  [before release];
  if (!QVDeviceItemBytes(_URL) || [_offered count] == 0) return NO;
  shown = self;
  QVDeviceTrace(
      @{@"kind" : @"openInMenu", @"event" : @"shown", @"offered" : [_offered valueForKey:@"applicationIdentifier"]});
  return YES;
}

- (void)dismissMenuAnimated:(BOOL)animated {
  (void)animated;
  if (shown != self) return;
  shown = nil;
  QVDeviceTrace(@{@"kind" : @"openInMenu", @"event" : @"dismissed"});
  if ([_delegate respondsToSelector:@selector(documentInteractionControllerDidDismissOpenInMenu:)])
    [_delegate documentInteractionControllerDidDismissOpenInMenu:self];
}

@end

@implementation UIDocumentInteractionController (Private)

- (id)_applications:(BOOL)all {
  (void)all;
  return QVDeviceAppsThatOpenDocuments();
}

@end

@implementation UIDocumentInteractionController (QVDeviceOpenInMenu)

+ (UIDocumentInteractionController *)qvdevice_shown {
  return shown;
}

- (NSArray *)qvdevice_offered {
  return _offered;
}

- (void)qvdevice_choose:(LSApplicationProxy *)application {
  [[self retain] autorelease];
  NSString *const identifier = [application applicationIdentifier];
  if ([_delegate respondsToSelector:@selector(documentInteractionController:willBeginSendingToApplication:)])
    [_delegate documentInteractionController:self willBeginSendingToApplication:identifier];
  QVDeviceHandToApp(identifier, @[ _URL ]);
  if ([_delegate respondsToSelector:@selector(documentInteractionController:didEndSendingToApplication:)])
    [_delegate documentInteractionController:self didEndSendingToApplication:identifier];
  [self dismissMenuAnimated:YES];
}

@end
