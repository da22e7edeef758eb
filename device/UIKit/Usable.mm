#import "Usable.h"

#import <UIKit/UIApplication.h>

NSString *QVDeviceNotUsable(UIApplication *application) {
  switch ([application applicationState]) {
  case UIApplicationStateActive:
    return nil;
  case UIApplicationStateInactive:
    return @"the app is not active";
  case UIApplicationStateBackground:
    return @"the app is in the background";
  }
  return nil;
}
