#import "DataProtection.h"
#import "FileAttributes.h"
#import "FileCreation.h"
#import "FileErrors.h"
#import "FilePath.h"
#import "InContainer.h"
#include "ReplacesFoundation.h"

#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <unistd.h>
#include <vector>

using namespace qvdevice;

namespace {

id valueOfKind(NSDictionary *attributes, NSString *key, Class kind, bool &wrong) {
  id const value = [attributes objectForKey:key];
  if (value && ![value isKindOfClass:kind]) wrong = true;
  return value;
}

// What a caller asks for, as the system calls take it: an attribute that is not asked for keeps the item's own value.
struct Wanted {
  explicit Wanted(const struct statx &status)
      : mode(status.stx_mode & 07777), user(status.stx_uid), group(status.stx_gid) {}

  mode_t mode;
  uid_t user;
  gid_t group;
  std::optional<NSTimeInterval> modified; // since the reference date
  NSFileProtectionType protection = nil;

  int read(NSDictionary *attributes);
  void take(QVDeviceFileAttributes *attributes);
};

int identifierOf(NSString *name, bool isUser, uid_t &identifier) {
  if ([name isEqualToString:NSUserName()]) {
    identifier = isUser ? geteuid() : getegid();
    return 0;
  }
  std::vector<char> space(16384);
  if (isUser) {
    struct passwd record, *found = nullptr;
    if (getpwnam_r([name UTF8String], &record, space.data(), space.size(), &found) != 0 || !found) return EINVAL;
    identifier = found->pw_uid;
  } else {
    struct group record, *found = nullptr;
    if (getgrnam_r([name UTF8String], &record, space.data(), space.size(), &found) != 0 || !found) return EINVAL;
    identifier = found->gr_gid;
  }
  return 0;
}

// What this file manager has answered itself needs no objects.
QVDeviceFileAttributes *ownAnswer(NSDictionary *attributes) {
  if ([attributes isKindOfClass:[QVDeviceFileAttributes class]]) return (QVDeviceFileAttributes *)attributes;
  if (![attributes isKindOfClass:[QVDeviceChangedFileAttributes class]]) return nil;
  return [(QVDeviceChangedFileAttributes *)attributes read];
}

void Wanted::take(QVDeviceFileAttributes *attributes) {
  const struct statx &status = *[attributes status];
  mode = status.stx_mode & 07777;
  user = status.stx_uid;
  group = status.stx_gid;
  modified = intervalOf(status.stx_mtime);
  protection = [attributes protection];
}

int Wanted::read(NSDictionary *attributes) {
  if (QVDeviceFileAttributes *const own = ownAnswer(attributes)) {
    take(own);
    return 0;
  }
  bool wrong = false;
  Class const number = [NSNumber class], string = [NSString class];
  if (NSNumber *const value = valueOfKind(attributes, NSFilePosixPermissions, number, wrong))
    if (!wrong) mode = [value unsignedIntValue] & 07777;
  NSNumber *const userNumber = valueOfKind(attributes, NSFileOwnerAccountID, number, wrong);
  NSNumber *const groupNumber = valueOfKind(attributes, NSFileGroupOwnerAccountID, number, wrong);
  NSString *const userName = valueOfKind(attributes, NSFileOwnerAccountName, string, wrong);
  NSString *const groupName = valueOfKind(attributes, NSFileGroupOwnerAccountName, string, wrong);
  NSDate *const date = valueOfKind(attributes, NSFileModificationDate, [NSDate class], wrong);
  id const className = [attributes objectForKey:NSFileProtectionKey];
  if (className && !(protection = protectionNamed(className))) wrong = true;
  if (wrong) return EINVAL;
  if (date) modified = [date timeIntervalSinceReferenceDate];

  // An identifier beats a name; a name that is the item's own needs no look-up.
  if (userNumber)
    user = [userNumber unsignedIntValue];
  else if (userName && ![userName isEqualToString:userNamed(user)])
    if (const int error = identifierOf(userName, true, user)) return error;
  if (groupNumber)
    group = [groupNumber unsignedIntValue];
  else if (groupName && ![groupName isEqualToString:groupNamed(group)])
    if (const int error = identifierOf(groupName, false, group)) return error;
  return 0;
}

int setModified(const char *path, NSTimeInterval date) {
  const NSTimeInterval since1970 = date + NSTimeIntervalSince1970;
  const double seconds = std::floor(since1970);
  struct timespec times[2] = {};
  times[0].tv_nsec = UTIME_OMIT;
  times[1].tv_sec = static_cast<time_t>(seconds);
  times[1].tv_nsec = static_cast<long>((since1970 - seconds) * 1e9);
  return utimensat(AT_FDCWD, path, times, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

// Only what differs is set: an app hands back whole dictionaries that it has just read.
int apply(const Wanted &wanted, const struct statx &status, const char *path) {
  const bool isLink = S_ISLNK(status.stx_mode);
  if (wanted.user != status.stx_uid || wanted.group != status.stx_gid)
    if (lchown(path, wanted.user, wanted.group) != 0) return errno;
  // A link has no permissions of its own here, and those of the item that it leads to are not meant.
  if (!isLink && wanted.mode != (status.stx_mode & 07777))
    if (chmod(path, wanted.mode) != 0) return errno;
  if (wanted.protection)
    if (const int error = storeProtection(path, wanted.protection)) return error;
  if (wanted.modified && *wanted.modified != intervalOf(status.stx_mtime)) return setModified(path, *wanted.modified);
  return 0;
}

} // namespace

namespace qvdevice {

BOOL setAttributes(NSDictionary *attributes, NSString *path, NSError **error) {
  const FilePath file(path);
  if (file.error()) return failedWriting(error, path, file.error());
  struct statx status;
  if (const int failure = readStatus(file.c_str(), status)) return failedWriting(error, path, failure);
  if (!attributes) return failedWriting(error, path, EINVAL);
  if (const int refusal = refusalOutsideContainer(file.c_str(), S_ISLNK(status.stx_mode)))
    return failedWriting(error, path, refusal);
  Wanted wanted(status);
  int failure = wanted.read(attributes);
  if (!failure) failure = apply(wanted, status, file.c_str());
  return failure ? failedWriting(error, path, failure) : YES;
}

} // namespace qvdevice

@implementation NSFileManager (QVDeviceAttributes)

- (NSDictionary *)attributesOfItemAtPath:(NSString *)path error:(NSError **)error {
  const FilePath file(path);
  struct statx status;
  const int failure = file.error() ? file.error() : readStatus(file.c_str(), status);
  if (failure) {
    failedReading(error, path, failure);
    return nil;
  }
  NSFileProtectionType const own = storedProtection(file.c_str());
  return [[[QVDeviceFileAttributes alloc] initWithStatus:&status
                                              protection:own ? own : defaultProtection()] autorelease];
}

- (BOOL)setAttributes:(NSDictionary *)attributes ofItemAtPath:(NSString *)path error:(NSError **)error {
  return setAttributes(attributes, path, error);
}

// The older name, by which Foundation itself gives what it makes to the phone's user.
- (BOOL)changeFileAttributes:(NSDictionary *)attributes atPath:(NSString *)path {
  return setAttributes(attributes, path, NULL);
}

@end
