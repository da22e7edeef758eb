#import "NSPersistentStoreInternal.h"

#import <CoreData/NSPersistentStoreCoordinator.h>

@implementation NSPersistentStore

- (void)dealloc {
  [_type release];
  [_configurationName release];
  [_URL release];
  [_options release];
  [_identifier release];
  [super dealloc];
}

@synthesize persistentStoreCoordinator = _coordinator;
@synthesize type = _type;
@synthesize configurationName = _configurationName;
@synthesize URL = _URL;
@synthesize options = _options;
@synthesize identifier = _identifier;

- (BOOL)isReadOnly {
  return [[_options objectForKey:NSReadOnlyPersistentStoreOption] boolValue];
}

@end

@implementation NSPersistentStore (QVDeviceInternal)

- (instancetype)qvdevice_initWithCoordinator:(NSPersistentStoreCoordinator *)coordinator
                                        type:(NSString *)type
                               configuration:(NSString *)configuration
                                         URL:(NSURL *)url
                                     options:(NSDictionary *)options
                                  identifier:(NSString *)identifier {
  if ((self = [super init])) {
    _coordinator = coordinator;
    _type = [type copy];
    _configurationName = [(configuration ? configuration : @"PF_DEFAULT_CONFIGURATION_NAME") copy];
    _URL = [url retain];
    _options = [options retain];
    _identifier = [identifier copy];
  }
  return self;
}

- (void)qvdevice_leaveCoordinator {
  _coordinator = nil;
}

@end
