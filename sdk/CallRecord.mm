#import "CallRecord.h"

#import <QVDevice/QVDevice.h>
#import <Zorbel/QVDeviceRecord.h>

#include <mutex>

namespace {

std::mutex &recording() {
  static std::mutex &lock = *new std::mutex;
  return lock;
}

NSMutableArray *calls() {
  static NSMutableArray *const all = [[NSMutableArray alloc] init];
  return all;
}

NSDictionary *entry(NSDictionary *arguments, NSDictionary *more) {
  NSMutableDictionary *const all = [NSMutableDictionary dictionaryWithDictionary:arguments];
  [all addEntriesFromDictionary:more];
  return all;
}

} // namespace

void QVDeviceRecordCall(NSString *call, NSDictionary *arguments, NSDictionary *traced) {
  {
    const std::lock_guard locked(recording());
    [calls() addObject:entry(arguments, @{@"call" : call})];
  }
  QVDeviceTrace(entry(traced, @{@"kind" : @"sdk", @"call" : call}));
}

void QVDeviceRecordCall(NSString *call, NSDictionary *arguments) { QVDeviceRecordCall(call, arguments, arguments); }

NSArray *QVDeviceZorbelRecord(void) {
  const std::lock_guard locked(recording());
  return [NSArray arrayWithArray:calls()];
}
