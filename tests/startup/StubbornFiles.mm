// A library that is in the process before ours and lets nobody remove the stale configuration file.
#import <Foundation/Foundation.h>

#include <objc/runtime.h>

namespace {
BOOL (*removeItem)(id, SEL, NSString *, NSError **);

BOOL refuseToRemove(id self, SEL selector, NSString *path, NSError **error) {
  if (![[path lastPathComponent] isEqualToString:@"QVConfig.plist"]) return removeItem(self, selector, path, error);
  if (error) *error = [NSError errorWithDomain:@"Stubborn" code:1 userInfo:@{NSLocalizedDescriptionKey : @"I keep it"}];
  return NO;
}
} // namespace

@interface QVStubbornFiles : NSObject
@end
@implementation QVStubbornFiles
+ (void)load {
  const Method method = class_getInstanceMethod([NSFileManager class], @selector(removeItemAtPath:error:));
  removeItem =
      reinterpret_cast<decltype(removeItem)>(method_setImplementation(method, reinterpret_cast<IMP>(&refuseToRemove)));
}
@end
