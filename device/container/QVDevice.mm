#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>

#include "container/Container.h"
#include "container/Settings.h"

namespace {

NSString *stringFrom(const std::string &text) { return [NSString stringWithUTF8String:text.c_str()]; }

} // namespace

NSDictionary *QVDeviceSettings(void) {
  const qvdevice::Settings &settings = qvdevice::settings();
  return @{
    @"systemVersion" : stringFrom(settings.systemVersion),
    @"idiom" : stringFrom(settings.idiom),
    @"defaultProtection" : stringFrom(settings.defaultProtection),
    @"terminateWithSuccess" : [NSNumber numberWithBool:settings.terminateWithSuccess],
    @"persistentDomainNames" : [NSNumber numberWithBool:settings.persistentDomainNames],
    @"printingAvailable" : [NSNumber numberWithBool:settings.printingAvailable],
  };
}

NSString *QVDeviceContainer(void) { return stringFrom(qvdevice::containerPath()); }
