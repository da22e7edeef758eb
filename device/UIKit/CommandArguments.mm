#import "CommandArguments.h"

NSString *QVDeviceUnexpectedArgument(NSDictionary *command, NSArray *keys) {
  for (NSString *key in [[command allKeys] sortedArrayUsingSelector:@selector(compare:)])
    if (![key isEqualToString:@"do"] && ![keys containsObject:key])
      return [NSString stringWithFormat:@"\"%@\" is not among what this command takes (%@)", key,
                                        [keys count] ? [keys componentsJoinedByString:@", "] : @"nothing"];
  return nil;
}

NSString *QVDeviceTextArgument(NSDictionary *command, NSString *key, NSString **problem) {
  id const value = [command objectForKey:key];
  if ([value isKindOfClass:[NSString class]] && [value length]) return value;
  *problem = value ? [NSString stringWithFormat:@"\"%@\" must be a text that is not empty", key]
                   : [NSString stringWithFormat:@"\"%@\" is missing", key];
  return nil;
}

id QVDeviceOptionalArgument(NSDictionary *command, NSString *key) {
  id const value = [command objectForKey:key];
  return value == [NSNull null] ? nil : value;
}
