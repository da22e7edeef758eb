#import "FileAttributes.h"

#include <cerrno>
#include <fcntl.h>
#include <grp.h>
#include <mutex>
#include <pwd.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <unordered_map>
#include <vector>

namespace qvdevice {
namespace {

// The account files do not change under a running app, and reading them costs more than all the rest of a look-up.
template <class Identifier, class Lookup> NSString *cachedName(Identifier identifier, Lookup lookup) {
  static std::mutex lock;
  static std::unordered_map<Identifier, NSString *> names;
  const std::lock_guard<std::mutex> guard(lock);
  const auto known = names.find(identifier);
  if (known != names.end()) return known->second;
  NSString *const name = [lookup(identifier) copy];
  names.emplace(identifier, name);
  return name;
}

NSString *typeOf(mode_t mode) {
  switch (mode & S_IFMT) {
  case S_IFREG:
    return NSFileTypeRegular;
  case S_IFDIR:
    return NSFileTypeDirectory;
  case S_IFLNK:
    return NSFileTypeSymbolicLink;
  case S_IFSOCK:
    return NSFileTypeSocket;
  case S_IFCHR:
    return NSFileTypeCharacterSpecial;
  case S_IFBLK:
    return NSFileTypeBlockSpecial;
  default:
    return NSFileTypeUnknown;
  }
}

NSDate *dateOf(const struct statx_timestamp &time) {
  return [NSDate dateWithTimeIntervalSinceReferenceDate:intervalOf(time)];
}

struct Attribute {
  NSString *const *key;
  id (*value)(const struct statx &status);
};

// A volume that does not record when an item was made answers the time of its last change, the nearest that it knows.
id creationDate(const struct statx &status) {
  return dateOf(status.stx_mask & STATX_BTIME ? status.stx_btime : status.stx_mtime);
}

const Attribute attributes[] = {
    {&NSFileType, [](const struct statx &status) -> id { return typeOf(status.stx_mode); }},
    {&NSFileSize, [](const struct statx &status) -> id { return @((unsigned long long)status.stx_size); }},
    {&NSFileModificationDate, [](const struct statx &status) -> id { return dateOf(status.stx_mtime); }},
    {&NSFileCreationDate, creationDate},
    {&NSFilePosixPermissions, [](const struct statx &status) -> id { return @((short)(status.stx_mode & 07777)); }},
    {&NSFileReferenceCount, [](const struct statx &status) -> id { return @((unsigned long)status.stx_nlink); }},
    {&NSFileSystemNumber,
     [](const struct statx &status) -> id { return @(makedev(status.stx_dev_major, status.stx_dev_minor)); }},
    {&NSFileSystemFileNumber, [](const struct statx &status) -> id { return @((unsigned long long)status.stx_ino); }},
    {&NSFileExtensionHidden, [](const struct statx &) -> id { return [NSNumber numberWithBool:NO]; }},
    {&NSFileOwnerAccountID, [](const struct statx &status) -> id { return @(status.stx_uid); }},
    {&NSFileGroupOwnerAccountID, [](const struct statx &status) -> id { return @(status.stx_gid); }},
    // The last two may be missing: an identifier need not have a name.
    {&NSFileOwnerAccountName, [](const struct statx &status) -> id { return userNamed(status.stx_uid); }},
    {&NSFileGroupOwnerAccountName, [](const struct statx &status) -> id { return groupNamed(status.stx_gid); }},
};

} // namespace

int readStatus(const char *path, struct statx &status) {
  return statx(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &status) == 0 ? 0 : errno;
}

NSTimeInterval intervalOf(const struct statx_timestamp &time) {
  return static_cast<NSTimeInterval>(time.tv_sec) - NSTimeIntervalSince1970 + time.tv_nsec * 1e-9;
}

// Whoever runs the device is the phone's one user to the apps on it.
NSString *userNamed(uid_t user) {
  if (user == geteuid()) return NSUserName();
  return cachedName(user, [](uid_t wanted) -> NSString * {
    struct passwd record, *found = nullptr;
    std::vector<char> space(16384);
    if (getpwuid_r(wanted, &record, space.data(), space.size(), &found) != 0 || !found) return nil;
    return [NSString stringWithUTF8String:found->pw_name];
  });
}

NSString *groupNamed(gid_t group) {
  if (group == getegid()) return NSUserName();
  return cachedName(group, [](gid_t wanted) -> NSString * {
    struct group record, *found = nullptr;
    std::vector<char> space(16384);
    if (getgrgid_r(wanted, &record, space.data(), space.size(), &found) != 0 || !found) return nil;
    return [NSString stringWithUTF8String:found->gr_name];
  });
}

} // namespace qvdevice

using qvdevice::attributes;

@interface QVDeviceFileAttributes (Keys)
- (NSString *)qvdevice_keyAt:(NSUInteger)index;
@end

@interface QVDeviceFileAttributeKeys : NSEnumerator {
@private
  QVDeviceFileAttributes *_owner;
  NSUInteger _next;
}
- (instancetype)initWithAttributes:(QVDeviceFileAttributes *)owner;
@end

@implementation QVDeviceFileAttributes

- (instancetype)initWithStatus:(const struct statx *)status protection:(NSFileProtectionType)protection {
  if ((self = [super init])) {
    _status = *status;
    _protection = protection;
  }
  return self;
}

- (const struct statx *)status {
  return &_status;
}

- (NSFileProtectionType)protection {
  return _protection;
}

- (id)objectForKey:(id)key {
  if (key == NSFileProtectionKey) return _protection;
  for (const auto &attribute : attributes)
    if (*attribute.key == key) return attribute.value(_status);
  if (![key isKindOfClass:[NSString class]]) return nil;
  if ([key isEqualToString:NSFileProtectionKey]) return _protection;
  for (const auto &attribute : attributes)
    if ([key isEqualToString:*attribute.key]) return attribute.value(_status);
  return nil;
}

// A key that is not there is nil, not an undefined key; only one with an @ asks the dictionary about itself.
- (id)valueForKey:(NSString *)key {
  return [key hasPrefix:@"@"] ? [super valueForKey:[key substringFromIndex:1]] : [self objectForKey:key];
}

// The key with this number, nil for one that the item has no value for.
- (NSString *)qvdevice_keyAt:(NSUInteger)index {
  if (index == std::size(attributes)) return _protection ? NSFileProtectionKey : nil;
  return attributes[index].value(_status) ? *attributes[index].key : nil;
}

- (NSUInteger)count {
  NSUInteger count = _protection ? 1 : 0;
  for (const auto &attribute : attributes)
    count += attribute.value(_status) != nil;
  return count;
}

- (NSEnumerator *)keyEnumerator {
  return [[[QVDeviceFileAttributeKeys alloc] initWithAttributes:self] autorelease];
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id *)objects
                                    count:(NSUInteger)capacity {
  // Nothing can change an immutable dictionary under its enumeration: any word that stays the same will do.
  state->mutationsPtr = reinterpret_cast<unsigned long *>(self);
  state->itemsPtr = objects;
  NSUInteger count = 0;
  for (; state->state <= std::size(attributes) && count < capacity; ++state->state)
    if (NSString *const key = [self qvdevice_keyAt:state->state]) objects[count++] = key;
  return count;
}

- (id)copyWithZone:(NSZone *)zone {
  (void)zone;
  return [self retain];
}

- (id)mutableCopyWithZone:(NSZone *)zone {
  return [[QVDeviceChangedFileAttributes allocWithZone:zone] initWithAttributes:self];
}

@end

@implementation QVDeviceFileAttributeKeys

- (instancetype)initWithAttributes:(QVDeviceFileAttributes *)owner {
  if ((self = [super init])) _owner = [owner retain];
  return self;
}

- (void)dealloc {
  [_owner release];
  [super dealloc];
}

- (id)nextObject {
  while (_next <= std::size(attributes))
    if (NSString *const key = [_owner qvdevice_keyAt:_next++]) return key;
  return nil;
}

@end
