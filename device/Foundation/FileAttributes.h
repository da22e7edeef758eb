// The answer of -[NSFileManager attributesOfItemAtPath:error:]: what two system calls told, made into objects when
// asked for.
#pragma once

#import <Foundation/Foundation.h>

#include <sys/stat.h>

@interface QVDeviceFileAttributes : NSDictionary {
@private
  struct statx _status;
  NSFileProtectionType _protection;
}
- (instancetype)initWithStatus:(const struct statx *)status protection:(NSFileProtectionType)protection;

@property (nonatomic, readonly) const struct statx *status;
@property (nonatomic, readonly) NSFileProtectionType protection;
@end

// Its mutable copy. Apps change one attribute and hand back all: as long as that one is the protection class, nothing
// else is made into objects.
@interface QVDeviceChangedFileAttributes : NSMutableDictionary {
@private
  QVDeviceFileAttributes *_read; // nil once anything but the class was changed
  NSMutableDictionary *_changed;
}
- (instancetype)initWithAttributes:(QVDeviceFileAttributes *)attributes;

@property (nonatomic, readonly) QVDeviceFileAttributes *read;
@end

namespace qvdevice {

// The item itself, not what a link leads to. Answers 0 or an errno.
int readStatus(const char *path, struct statx &status);

NSTimeInterval intervalOf(const struct statx_timestamp &time);

NSString *userNamed(uid_t user);
NSString *groupNamed(gid_t group);

} // namespace qvdevice
