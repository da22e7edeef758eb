#import "IncomingURL.h"

#import "Lifecycle.h"

#import <UIKit/UIKit.h>

#import <QVDevice/QVDevice.h>

#include "container/Json.h"
#include "container/Launch.h"
#include "container/Url.h"

namespace {

// The system that first gave an app its URLs together with a dictionary of options.
constexpr NSInteger optionsVersion = 9;

NSString *stringFrom(const std::string &text) { return [NSString stringWithUTF8String:text.c_str()]; }

} // namespace

@implementation QVDeviceIncomingURL

+ (instancetype)incomingFromLaunch {
  const qvdevice::Launch &launch = qvdevice::launch();
  if (!launch.url) return nil;
  QVDeviceIncomingURL *const incoming = [[[self alloc] init] autorelease];
  incoming->url_ = [[NSURL URLWithString:stringFrom(*launch.url)] retain];
  if (launch.sourceApplication) incoming->sourceApplication_ = [stringFrom(*launch.sourceApplication) retain];
  if (!launch.annotation.is_null()) incoming->annotation_ = [qvdevice::objectFrom(launch.annotation) retain];
  return incoming;
}

+ (instancetype)incomingURL:(NSURL *)url sourceApplication:(NSString *)sourceApplication annotation:(id)annotation {
  QVDeviceIncomingURL *const incoming = [[[self alloc] init] autorelease];
  incoming->url_ = [url retain];
  incoming->sourceApplication_ = [sourceApplication copy];
  incoming->annotation_ = [annotation retain];
  return incoming;
}

- (void)dealloc {
  [url_ release];
  [sourceApplication_ release];
  [annotation_ release];
  [super dealloc];
}

- (NSMutableDictionary *)optionsWithSource:(NSString *)sourceKey annotation:(NSString *)annotationKey {
  NSMutableDictionary *const options = [NSMutableDictionary dictionary];
  if (sourceApplication_) [options setObject:sourceApplication_ forKey:sourceKey];
  if (annotation_) [options setObject:annotation_ forKey:annotationKey];
  return options;
}

- (NSDictionary *)launchOptions {
  NSMutableDictionary *const options = [self optionsWithSource:UIApplicationLaunchOptionsSourceApplicationKey
                                                    annotation:UIApplicationLaunchOptionsAnnotationKey];
  [options setObject:url_ forKey:UIApplicationLaunchOptionsURLKey];
  return options;
}

- (NSDictionary *)openOptions {
  NSMutableDictionary *const options = [self optionsWithSource:UIApplicationOpenURLOptionsSourceApplicationKey
                                                    annotation:UIApplicationOpenURLOptionsAnnotationKey];
  // Whether a document may be edited where it lies: nothing but a copy is ever handed over here.
  [options setObject:[NSNumber numberWithBool:NO] forKey:UIApplicationOpenURLOptionsOpenInPlaceKey];
  return options;
}

@end

NSURL *QVDeviceURLFrom(NSString *text, NSString **problem) {
  const std::string_view wrong = qvdevice::urlProblem([text UTF8String]);
  if (wrong.empty()) return [NSURL URLWithString:text];
  *problem = [NSString stringWithFormat:@"\"%@\"%s", text, wrong.data()];
  return nil;
}

@implementation UIApplication (QVDeviceIncomingURL)

- (void)qvdevice_open:(QVDeviceIncomingURL *)incoming {
  NSURL *const url = incoming->url_;
  NSMutableDictionary *const trace = [NSMutableDictionary
      dictionaryWithObjectsAndKeys:@"input", @"kind", @"openURL", @"event", [url absoluteString], @"url", nil];
  if (incoming->sourceApplication_) [trace setObject:incoming->sourceApplication_ forKey:@"sourceApplication"];
  QVDeviceTrace(trace);
  const BOOL knowsOptions = [[[UIDevice currentDevice] systemVersion] integerValue] >= optionsVersion;
  if (knowsOptions && [_delegate respondsToSelector:@selector(application:openURL:options:)])
    [_delegate application:self openURL:url options:[incoming openOptions]];
  else if ([_delegate respondsToSelector:@selector(application:openURL:sourceApplication:annotation:)])
    [_delegate application:self openURL:url sourceApplication:incoming->sourceApplication_
                annotation:incoming->annotation_];
  else if ([_delegate respondsToSelector:@selector(application:handleOpenURL:)])
    [_delegate application:self handleOpenURL:url];
}

@end
