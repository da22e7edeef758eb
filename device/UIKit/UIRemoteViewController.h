#pragma once

#import <UIKit/UIViewController.h>

@class QVDeviceExtensionRequest;

/// Stands in a host for the view controller of an extension, which lives in a process of its own; that process goes
/// with this object.
@interface _UIRemoteViewController : UIViewController {
@private
  QVDeviceExtensionRequest *_request;
}

- (instancetype)initWithRequest:(QVDeviceExtensionRequest *)request;

@end
