// Foundation's path functions, answered from the container. They stand before Foundation's own in the link order, so
// Foundation itself calls them too: nothing that it reads or writes by itself lies in the real user's home.

#import <Foundation/Foundation.h>

#include <dlfcn.h>

#include "container/Container.h"

// Of Debian's Foundation, in none of its headers.
extern "C" const char *GSPathHandling(const char *mode);

namespace {

NSString *container() {
  const std::string &path = qvdevice::containerPath();
  return [NSString stringWithUTF8String:path.c_str()];
}

NSString *inContainer(NSString *folder) { return [container() stringByAppendingPathComponent:folder]; }

/// The user domain's folder, relative to the container; nil for one that the platform does not have.
NSString *userFolder(NSSearchPathDirectory directory) {
  switch (directory) {
  case NSApplicationDirectory:
    return @"Applications";
  case NSLibraryDirectory:
  case NSAllLibrariesDirectory:
    return @"Library";
  case NSDocumentDirectory:
    return @"Documents";
  case NSDocumentationDirectory:
    return @"Library/Documentation";
  case NSDesktopDirectory:
    return @"Desktop";
  case NSCachesDirectory:
    return @"Library/Caches";
  case NSApplicationSupportDirectory:
    return @"Library/Application Support";
  case NSDownloadsDirectory:
    return @"Downloads";
  case NSMoviesDirectory:
    return @"Movies";
  case NSMusicDirectory:
    return @"Music";
  case NSPicturesDirectory:
    return @"Pictures";
  default:
    return nil;
  }
}

/// Debian's Foundation takes a backslash for a slash as well, unless it is told to keep to this system's way.
__attribute__((constructor(102))) void takeBackslashesForWhatTheyAre() { GSPathHandling("unix"); }

using SearchPath = NSArray *(*)(NSSearchPathDirectory, NSSearchPathDomainMask, BOOL);

} // namespace

NSString *NSUserName(void) { return @"mobile"; }

NSString *NSFullUserName(void) { return @"Mobile User"; }

NSString *NSHomeDirectory(void) { return container(); }

NSString *NSHomeDirectoryForUser(NSString *name) { return [name isEqualToString:NSUserName()] ? container() : nil; }

NSString *NSTemporaryDirectory(void) { return [inContainer(@"tmp") stringByAppendingString:@"/"]; }

NSString *GSDefaultsRootForUser(NSString *name) {
  (void)name;
  return inContainer(@"Library/Preferences");
}

NSArray *NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory, NSSearchPathDomainMask domains,
                                             BOOL expandTilde) {
  NSMutableArray *const paths = [NSMutableArray array];
  NSString *const folder = (domains & NSUserDomainMask) != 0 ? userFolder(directory) : nil;
  if (folder != nil) {
    [paths addObject:expandTilde ? inContainer(folder) : [@"~" stringByAppendingPathComponent:folder]];
  }
  // Foundation finds its own resources by the other domains.
  static const auto original = reinterpret_cast<SearchPath>(::dlsym(RTLD_NEXT, "NSSearchPathForDirectoriesInDomains"));
  const NSSearchPathDomainMask others = domains & ~static_cast<NSSearchPathDomainMask>(NSUserDomainMask);
  if (others != 0) [paths addObjectsFromArray:original(directory, others, expandTilde)];
  return paths;
}

@implementation NSFileManager (QVDeviceDirectories)

- (NSArray *)URLsForDirectory:(NSSearchPathDirectory)directory inDomains:(NSSearchPathDomainMask)domainMask {
  NSMutableArray *const urls = [NSMutableArray array];
  for (NSString *path in NSSearchPathForDirectoriesInDomains(directory, domainMask, YES)) {
    [urls addObject:[NSURL fileURLWithPath:path isDirectory:YES]];
  }
  return urls;
}

@end
