#import <CoreFoundation/CFBase.h>
#import <Foundation/Foundation.h>

// What others see as constants is made when the class below is loaded: no earlier code of this library can send a
// message.
CFBooleanRef storedTrue __asm__("kCFBooleanTrue");
CFBooleanRef storedFalse __asm__("kCFBooleanFalse");

@interface QVDeviceCoreFoundation : NSObject
@end

@implementation QVDeviceCoreFoundation

+ (void)load {
  storedTrue = (CFBooleanRef)[[NSNumber numberWithBool:YES] retain];
  storedFalse = (CFBooleanRef)[[NSNumber numberWithBool:NO] retain];
}

@end

CFTypeRef CFRetain(CFTypeRef object) { return (CFTypeRef)[(id)object retain]; }

void CFRelease(CFTypeRef object) { [(id)object release]; }
