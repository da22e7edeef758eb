// Commands from outside. {"do": "set", "values": {...}, "message": "..."}: the administrator changes something while
// the app runs. {"do": "authenticate"}: the user has to show who they are. {"do": "ask", "question": "..."}: the SDK
// asks its delegate one of its questions. {"do": "policies"}: what the SDK answers with now.

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

NSString *const questions[] = {@"isPasscodeExtensionActive", @"canAppDisplayPasscodeExtension"};

/// What the delegate answers; the trace shows it.
BOOL ask(id<ZorbelDelegate> delegate, NSString *question) {
  const BOOL answer = [question isEqualToString:questions[0]] ? [delegate isPasscodeExtensionActive]
                                                              : [delegate canAppDisplayPasscodeExtension];
  QVDeviceTrace(@{@"kind" : @"ask", @"question" : question, @"answer" : [NSNumber numberWithBool:answer]});
  return answer;
}

NSString *const nobody = @"nobody has made itself the SDK's delegate";

NSString *askOne(NSDictionary *command) {
  for (NSString *question : questions) {
    if (![question isEqual:[command objectForKey:@"question"]]) continue;
    id<ZorbelDelegate> const delegate = [[Zorbel sharedInstance] zorbelDelegate];
    if (!delegate) return nobody;
    ask(delegate, question);
    return nil;
  }
  return [NSString stringWithFormat:@"\"question\" must be %@ or %@", questions[0], questions[1]];
}

NSString *tellPolicies() {
  QVDeviceAnswer(qvdevice::objectFrom(zorbel::valuesOf(zorbel::policies())));
  return nil;
}

/// Whoever cannot show the passcode extension is not asked to.
NSString *authenticate() {
  id<ZorbelDelegate> const delegate = [[Zorbel sharedInstance] zorbelDelegate];
  if (!delegate) return nobody;
  if (!ask(delegate, questions[1])) return @"the app cannot display the passcode extension";
  [delegate authenticateUser];
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
  QVDeviceSetControlHandler(@"ask", ^NSString *(NSDictionary *command) {
    return askOne(command);
  });
  QVDeviceSetControlHandler(@"policies", ^NSString *(NSDictionary *) {
    return tellPolicies();
  });
  QVDeviceSetControlHandler(@"authenticate", ^NSString *(NSDictionary *) {
    return authenticate();
  });
  [pool release];
}

@end
