#import "Say.h"

#include <stdio.h>

void Say(NSString *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  NSString *line = [[NSString alloc] initWithFormat:format arguments:arguments];
  va_end(arguments);
  puts([line UTF8String]);
  fflush(stdout);
  [line release];
}

NSString *OnOneLine(NSDictionary *dictionary) {
  if (!dictionary) return @"none";
  NSMutableArray *entries = [NSMutableArray array];
  for (NSString *key in [[dictionary allKeys] sortedArrayUsingSelector:@selector(compare:)])
    [entries addObject:[NSString stringWithFormat:@"%@=%@", key, [dictionary objectForKey:key]]];
  return [entries count] ? [entries componentsJoinedByString:@" "] : @"nothing";
}
