// KeychainUser COMMAND ARGUMENT...: one call, and what came of it on standard output.
//   add CLASS ACCOUNT DATA | find CLASS ACCOUNT | count CLASS | delete CLASS
//   set KEY VALUE | get KEY | domains | remove-domains | set-domain NAME KEY VALUE | responds
#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include <cstdio>

namespace {

NSString *text(const char *argument) { return [NSString stringWithUTF8String:argument]; }

void show(NSString *line) { std::printf("%s\n", line ? [line UTF8String] : "(null)"); }

int keychain(NSString *command, NSArray *arguments) {
  NSMutableDictionary *const item = [NSMutableDictionary dictionaryWithObject:[arguments objectAtIndex:0]
                                                                       forKey:(id)kSecClass];
  if ([arguments count] > 1) [item setObject:[arguments objectAtIndex:1] forKey:(id)kSecAttrAccount];
  CFTypeRef result = nullptr;
  OSStatus status = 0;
  if ([command isEqual:@"add"]) {
    [item setObject:[[arguments objectAtIndex:2] dataUsingEncoding:NSUTF8StringEncoding] forKey:(id)kSecValueData];
    status = SecItemAdd((CFDictionaryRef)item, nullptr);
  } else if ([command isEqual:@"find"]) {
    [item setObject:@YES forKey:(id)kSecReturnData];
    status = SecItemCopyMatching((CFDictionaryRef)item, &result);
    if (!status) show([[[NSString alloc] initWithData:(id)result encoding:NSUTF8StringEncoding] autorelease]);
  } else if ([command isEqual:@"count"]) {
    [item setObject:@YES forKey:(id)kSecReturnPersistentRef];
    [item setObject:(id)kSecMatchLimitAll forKey:(id)kSecMatchLimit];
    status = SecItemCopyMatching((CFDictionaryRef)item, &result);
    show([NSString stringWithFormat:@"%lu", (unsigned long)[(id)result count]]);
  } else {
    status = SecItemDelete((CFDictionaryRef)item);
  }
  if (result) CFRelease(result);
  show([NSString stringWithFormat:@"status %d", status]);
  return 0;
}

int preferences(NSString *command, NSArray *arguments) {
  NSUserDefaults *const defaults = [NSUserDefaults standardUserDefaults];
  if ([command isEqual:@"responds"]) {
    show([defaults respondsToSelector:@selector(persistentDomainNames)] ? @"yes" : @"no");
  } else if ([command isEqual:@"set"]) {
    [defaults setObject:[arguments objectAtIndex:1] forKey:[arguments objectAtIndex:0]];
    [defaults synchronize];
  } else if ([command isEqual:@"get"]) {
    show([[defaults objectForKey:[arguments objectAtIndex:0]] description]);
  } else if ([command isEqual:@"set-domain"]) {
    [defaults setPersistentDomain:@{[arguments objectAtIndex:1] : [arguments objectAtIndex:2]}
                          forName:[arguments objectAtIndex:0]];
    [defaults synchronize];
  } else {
    for (NSString *name in [[defaults persistentDomainNames] sortedArrayUsingSelector:@selector(compare:)]) {
      show(name);
      if ([command isEqual:@"remove-domains"]) [defaults removePersistentDomainForName:name];
    }
  }
  return 0;
}

} // namespace

int main(int count, char *words[]) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  NSMutableArray *const arguments = [NSMutableArray array];
  for (int i = 2; i < count; ++i)
    [arguments addObject:text(words[i])];
  NSString *const command = text(words[1]);
  const bool isKeychain = [@[ @"add", @"find", @"count", @"delete" ] containsObject:command];
  const int status = isKeychain ? keychain(command, arguments) : preferences(command, arguments);
  [pool drain];
  return status;
}
