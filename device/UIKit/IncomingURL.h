// A URL that another app handed to the system for this one.
#pragma once

#import <UIKit/UIApplication.h>

@interface QVDeviceIncomingURL : NSObject {
@public
  NSURL *url_;
  NSString *sourceApplication_;
  id annotation_;
}
// What this process was launched for; nil when that is no URL.
+ (instancetype)incomingFromLaunch;
+ (instancetype)incomingURL:(NSURL *)url sourceApplication:(NSString *)sourceApplication annotation:(id)annotation;
- (NSDictionary *)launchOptions;
@end

// nil, with the reason in `problem`, for a text that is no URL with a scheme.
NSURL *QVDeviceURLFrom(NSString *text, NSString **problem);

@interface UIApplication (QVDeviceIncomingURL)
// Hands the URL to the delegate as this version of the system does; to nobody when the delegate takes none.
- (void)qvdevice_open:(QVDeviceIncomingURL *)incoming;
@end
