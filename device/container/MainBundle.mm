// What an app learns about itself: its bundle, which is flat on the phone, and its environment.

#import <Foundation/Foundation.h>
#include <objc/runtime.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>

#include "runtime/Methods.h"

namespace {

using qvdevice::asImplementation;
using qvdevice::implementationAs;

using ResourcePath = NSString *(*)(NSBundle *, SEL);
ResourcePath originalResourcePath;

/// A bundle without a Resources folder has its resources beside its executable.
NSString *NSBundle_resourcePath(NSBundle *self, SEL command) {
  NSString *const path = originalResourcePath(self, command);
  BOOL isFolder = NO;
  if ([[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&isFolder] && isFolder) return path;
  return [self bundlePath];
}

using MainBundle = NSBundle *(*)(Class, SEL);
MainBundle originalMainBundle;

/// Foundation knows apps by their folders' names, but not their extensions.
NSBundle *NSBundle_mainBundle(Class self, SEL command) {
  static NSBundle *const extension = [] {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const bool isExtension = program.parent_path().extension() == ".appex";
    NSString *const folder = [NSString stringWithUTF8String:program.parent_path().c_str()];
    return isExtension ? [[NSBundle alloc] initWithPath:folder] : nil;
  }();
  return extension ? extension : originalMainBundle(self, command);
}

/// Foundation's own was taken when Foundation was loaded, with the real user's home in it.
NSDictionary *NSProcessInfo_environment(NSProcessInfo *, SEL) {
  NSMutableDictionary *const variables = [NSMutableDictionary dictionary];
  for (char **entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const char *const separator = std::strchr(*entry, '=');
    if (separator == nullptr) continue;
    NSString *const name = [[[NSString alloc] initWithBytes:*entry length:static_cast<NSUInteger>(separator - *entry)
                                                   encoding:NSUTF8StringEncoding] autorelease];
    NSString *const value = [NSString stringWithUTF8String:separator + 1];
    if (name != nil && value != nil) [variables setObject:value forKey:name];
  }
  return variables;
}

__attribute__((constructor(102))) void takeOverWhatAnAppLearnsAboutItself() {
  const Method resourcePath = class_getInstanceMethod(objc_getClass("NSBundle"), sel_registerName("resourcePath"));
  originalResourcePath = implementationAs<ResourcePath>(method_getImplementation(resourcePath));
  method_setImplementation(resourcePath, asImplementation(NSBundle_resourcePath));
  const Method mainBundle = class_getClassMethod(objc_getClass("NSBundle"), sel_registerName("mainBundle"));
  originalMainBundle = implementationAs<MainBundle>(method_getImplementation(mainBundle));
  method_setImplementation(mainBundle, asImplementation(NSBundle_mainBundle));
  const Class processInfo = objc_getClass("NSProcessInfo");
  const Method environment = class_getInstanceMethod(processInfo, sel_registerName("environment"));
  method_setImplementation(environment, asImplementation(NSProcessInfo_environment));
}

} // namespace
