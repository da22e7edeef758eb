// {"do": "hooks"}: the library's hooks, with the state that each is in.
#import <QVDevice/QVDevice.h>

#include "container/Json.h"
#include "observation/Hooks.h"

@interface QVDeviceHookCommand : NSObject
@end

@implementation QVDeviceHookCommand

+ (void)load {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  QVDeviceSetControlHandler(@"hooks", ^NSString *(NSDictionary *) {
    nlohmann::json all = nlohmann::json::array();
    for (const auto &hook : qvdevice::hooks())
      all.emplace_back(hook);
    QVDeviceAnswer(@{@"hooks" : qvdevice::objectFrom(all)});
    return nil;
  });
  [pool release];
}

@end
