#import "Commands.h"

#import "Lifecycle.h"

#import <QVDevice/QVDevice.h>

void QVDeviceTakeLifecycleCommands(UIApplication *application) {
  QVDeviceSetControlHandler(@"becomeActive", ^NSString *(NSDictionary *) {
    return [application qvdevice_becomeActive];
  });
  QVDeviceSetControlHandler(@"resignActive", ^NSString *(NSDictionary *) {
    return [application qvdevice_resignActive];
  });
  QVDeviceSetControlHandler(@"enterBackground", ^NSString *(NSDictionary *) {
    return [application qvdevice_enterBackground];
  });
  QVDeviceSetControlHandler(@"enterForeground", ^NSString *(NSDictionary *) {
    return [application qvdevice_enterForeground];
  });
  // Answered before it happens: afterwards there is nobody left to answer.
  QVDeviceSetControlHandler(@"terminate", ^NSString *(NSDictionary *) {
    [application performSelector:@selector(qvdevice_terminate) withObject:nil afterDelay:0];
    return nil;
  });
}
