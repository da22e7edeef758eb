#pragma once

#import <CoreData/NSPersistentStore.h>

@interface NSPersistentStore (QVDeviceInternal)
- (instancetype)qvdevice_initWithCoordinator:(NSPersistentStoreCoordinator *)coordinator
                                        type:(NSString *)type
                               configuration:(NSString *)configuration
                                         URL:(NSURL *)url
                                     options:(NSDictionary *)options
                                  identifier:(NSString *)identifier;
- (void)qvdevice_leaveCoordinator;
@end
