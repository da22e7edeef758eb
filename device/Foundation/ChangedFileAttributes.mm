#import "DataProtection.h"
#import "FileAttributes.h"

@implementation QVDeviceChangedFileAttributes

- (instancetype)initWithAttributes:(QVDeviceFileAttributes *)attributes {
  if ((self = [super init])) _read = [attributes retain];
  return self;
}

- (void)dealloc {
  [_read release];
  [_changed release];
  [super dealloc];
}

- (QVDeviceFileAttributes *)read {
  return _read;
}

- (NSDictionary *)qvdevice_contents {
  return _read ? (NSDictionary *)_read : (NSDictionary *)_changed;
}

- (NSMutableDictionary *)qvdevice_changeable {
  if (_read) {
    _changed = [[NSMutableDictionary alloc] initWithDictionary:_read];
    [_read release];
    _read = nil;
  }
  return _changed;
}

- (NSUInteger)count {
  return [[self qvdevice_contents] count];
}

- (id)objectForKey:(id)key {
  return [[self qvdevice_contents] objectForKey:key];
}

- (id)valueForKey:(NSString *)key {
  return [[self qvdevice_contents] valueForKey:key];
}

- (NSEnumerator *)keyEnumerator {
  return [[self qvdevice_contents] keyEnumerator];
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id *)objects
                                    count:(NSUInteger)capacity {
  return [[self qvdevice_contents] countByEnumeratingWithState:state objects:objects count:capacity];
}

- (void)setObject:(id)object forKey:(id)key {
  NSFileProtectionType const protection = _read ? qvdevice::protectionNamed(object) : nil;
  if (!protection || ![NSFileProtectionKey isEqual:key]) {
    [[self qvdevice_changeable] setObject:object forKey:key];
    return;
  }
  QVDeviceFileAttributes *const read = [[QVDeviceFileAttributes alloc] initWithStatus:[_read status]
                                                                           protection:protection];
  [_read release];
  _read = read;
}

- (void)removeObjectForKey:(id)key {
  [[self qvdevice_changeable] removeObjectForKey:key];
}

- (id)copyWithZone:(NSZone *)zone {
  return [[self qvdevice_contents] copyWithZone:zone];
}

- (id)mutableCopyWithZone:(NSZone *)zone {
  return [[self qvdevice_contents] mutableCopyWithZone:zone];
}

@end
