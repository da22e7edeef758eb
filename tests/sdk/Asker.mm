// Says what the SDK answers under the policies of this process, one answer a line; given "log" and a text, logs that.
#import <Foundation/Foundation.h>
#import <Zorbel/Zorbel.h>

#include <cstdio>
#include <string_view>

static void say(const char *name, NSString *answer) { std::printf("%s: %s\n", name, [answer UTF8String]); }

int main(int count, char **arguments) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  if (count == 3 && std::string_view(arguments[1]) == "log") {
    [Zorbel wrapperLogAtLevel:5 format:@"%s", arguments[2]];
    [pool release];
    return 0;
  }
  std::puts("main");
  Zorbel *const sdk = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
  std::printf("flags: %d%d%d\n", [sdk isReady], [sdk isReadyToTerminate], [sdk isCheckInRequested]);
  std::printf("states: %ld %ld %ld %ld %ld\n", long([sdk authState]), long([sdk managedPolicy]),
              long([sdk openInPolicy]), long([sdk pasteboardPolicy]), long([sdk printPolicy]));
  NSArray *const whitelist = [sdk openInWhitelist];
  say("whitelist", whitelist ? [whitelist componentsJoinedByString:@","] : @"nil");
  say("prefixes", [[Zorbel zbPasteboardTypePrefixes] componentsJoinedByString:@","]);
  NSDictionary *const config = [sdk config];
  say("config", config ? [[config objectForKey:@"key"] description] : @"nil");
  NSData *const token = [[sdk getAppInfo] objectForKey:@"token"];
  say("token", [token isKindOfClass:[NSData class]] ? [[[NSString alloc] initWithData:token
                                                                             encoding:NSUTF8StringEncoding] autorelease]
                                                    : @"nil");
  std::printf("schemes: %d%d%d%d\n", [Zorbel isAppScheme:[NSURL URLWithString:@"zb1://x"]],
              [Zorbel isAppScheme:@"ZB1://x"], [Zorbel isAppScheme:[NSURL URLWithString:@"http://x"]],
              [Zorbel isAppScheme:nil]);
  [pool release];
  return 0;
}
