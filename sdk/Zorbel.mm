#import <Zorbel/Zorbel.h>

#import <objc/objc-arc.h>

#import "CallRecord.h"

namespace {
Zorbel *sharedInstance = nil;
}

@implementation Zorbel

+ (id)initPrivateWithDelegate:(id)delegate version:(NSString *)version swizzledMethods:(NSArray *)swizzledMethods {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  @synchronized(self) {
    if (!sharedInstance) sharedInstance = [[self alloc] init];
  }
  NSString *const call = NSStringFromSelector(_cmd);
  NSDictionary *const others = @{
    @"version" : QVDeviceOrNull([[version copy] autorelease]),
    @"swizzledMethods" : QVDeviceOrNull([[swizzledMethods copy] autorelease]),
  };
  NSMutableDictionary *const recorded = [NSMutableDictionary dictionaryWithDictionary:others];
  [recorded setObject:QVDeviceUnretained(delegate) forKey:@"delegate"];
  NSMutableDictionary *const traced = [NSMutableDictionary dictionaryWithDictionary:others];
  [traced setObject:QVDeviceClassName(delegate) forKey:@"delegate"];
  if (swizzledMethods) [traced setObject:[swizzledMethods description] forKey:@"swizzledMethods"];
  QVDeviceRecordCall(call, recorded, traced);
  [pool release];
  return sharedInstance;
}

+ (Zorbel *)sharedInstance {
  @synchronized(self) {
    return sharedInstance;
  }
}

- (void)dealloc {
  objc_destroyWeak(&_delegate);
  [_appDelegateProxy release];
  [super dealloc];
}

@end
