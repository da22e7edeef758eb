#import <Zorbel/ZBLogHelper.h>

#import <QVDevice/QVDevice.h>

#include "LogFolder.h"

namespace {

// With the one that is about to be made, ten.
constexpr std::size_t kKeptFiles = 9;

const zorbel::LogFolder &folder() {
  static const zorbel::LogFolder &one =
      *new zorbel::LogFolder([[QVDeviceContainer() stringByAppendingPathComponent:@"Library/Logs/Zorbel"] UTF8String]);
  return one;
}

} // namespace

@implementation ZBLogHelper

+ (void)rotateLogFiles {
  folder().rotate(kKeptFiles);
}

+ (NSString *)appendDate:(NSDate *)date toFileName:(NSString *)name {
  if (!date || !name) return nil;
  const std::string dated = zorbel::LogFolder::dated([name UTF8String], [date timeIntervalSince1970] * 1000);
  return [NSString stringWithUTF8String:dated.c_str()];
}

+ (NSString *)createLogFileWithName:(NSString *)name {
  const auto file = folder().create(name ? [name UTF8String] : "");
  return file ? [NSString stringWithUTF8String:file->c_str()] : nil;
}

@end
