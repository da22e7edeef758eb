#import "ListeningDelegate.h"

@implementation QVListeningDelegate

- (void)note:(NSString *)format, ... {
  va_list arguments;
  va_start(arguments, format);
  NSString *const text = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  heard.push_back(std::string([NSThread isMainThread] ? "" : "wrong thread: ") + [text UTF8String]);
  if (whenTold) whenTold();
}

- (void)zorbelIsReady:(Zorbel *)zorbel {
  [self note:@"ready"];
}

- (void)zorbel:(Zorbel *)zorbel authStateChangedTo:(NSInteger)state withMessage:(NSString *)message {
  [self note:@"authState %ld, %@", static_cast<long>(state), message];
}

- (void)zorbel:(Zorbel *)zorbel configChangedTo:(NSDictionary *)config {
  [self note:@"config %@", [config objectForKey:@"key"]];
}

- (void)zorbel:(Zorbel *)zorbel managedPolicyChangedTo:(NSInteger)policy {
  [self note:@"managedPolicy %ld", static_cast<long>(policy)];
}

- (void)zorbel:(Zorbel *)zorbel openInPolicyChangedTo:(NSInteger)policy whitelist:(NSArray *)whitelist {
  [self note:@"openInPolicy %ld, %@", static_cast<long>(policy),
             whitelist ? [whitelist componentsJoinedByString:@" "] : nil];
}

- (void)zorbel:(Zorbel *)zorbel pasteboardPolicyChangedTo:(NSInteger)policy {
  [self note:@"pasteboardPolicy %ld", static_cast<long>(policy)];
}

- (void)zorbel:(Zorbel *)zorbel printPolicyChangedTo:(NSInteger)policy {
  [self note:@"printPolicy %ld", static_cast<long>(policy)];
}

- (BOOL)isPasscodeExtensionActive {
  [self note:@"active?"];
  return active;
}

- (BOOL)canAppDisplayPasscodeExtension {
  [self note:@"able?"];
  return able;
}

- (void)authenticateUser {
  [self note:@"authenticate"];
}

@end
