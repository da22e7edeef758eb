// The administrator changes something while the app runs: a command from outside, {"do": "set", "values": {...},
// "message": "..."}.

#import <QVDevice/QVDevice.h>
#import <Zorbel/QVDevicePolicies.h>

#include "Policies.h"
#import "Zorbel+Changes.h"
#include "container/Json.h"

namespace {

NSString *problemOf(NSDictionary *command) {
  for (NSString *key in [[command allKeys] sortedArrayUsingSelector:@selector(compare:)]) {
    if (![@[ @"do", @"values", @"message" ] containsObject:key])
      return [NSString stringWithFormat:@"set knows no \"%@\", only values and message", key];
  }
  if (![[command objectForKey:@"values"] isKindOfClass:[NSDictionary class]]) return @"\"values\" must be an object";
  id const message = [command objectForKey:@"message"];
  if (message && ![message isKindOfClass:[NSString class]]) return @"\"message\" must be a string";
  return nil;
}

NSString *set(NSDictionary *command) {
  if (NSString *const problem = problemOf(command)) return problem;
  const nlohmann::json values = qvdevice::jsonFrom([command objectForKey:@"values"]);
  const zorbel::Change change =
      zorbel::changePolicies([&values](const zorbel::Policies &before) { return zorbel::takeValues(values, before); });
  if (change.refusal) return [NSString stringWithUTF8String:change.refusal->reason.c_str()];
  [[Zorbel sharedInstance] tellChangesFrom:*change.before to:*change.now message:[command objectForKey:@"message"]];
  return nil;
}

} // namespace

@interface ZBCommands : NSObject
@end

@implementation ZBCommands

+ (void)load {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  QVDeviceSetControlHandler(@"set", ^NSString *(NSDictionary *command) {
    return set(command);
  });
  [pool release];
}

@end
