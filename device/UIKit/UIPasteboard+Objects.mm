#import <UIKit/UIPasteboard.h>

#import "PasteboardKinds.h"

NSArray *UIPasteboardTypeListString;
NSArray *UIPasteboardTypeListURL;

namespace {

/// The objects of that class under one of the types, at most one an item.
NSArray *objectsIn(NSArray *items, NSArray *types, Class cls) {
  NSMutableArray *const found = [NSMutableArray array];
  for (NSDictionary *item in items) {
    for (NSString *type in types) {
      id const value = qvdevice::valueOfType(type, [item objectForKey:type]);
      if (![value isKindOfClass:cls]) continue;
      [found addObject:value];
      break;
    }
  }
  return found;
}

id firstOf(NSArray *items, NSArray *types, Class cls) {
  NSArray *const first = [items count] ? @[ [items objectAtIndex:0] ] : nil;
  NSArray *const found = objectsIn(first, types, cls);
  return [found count] ? [found objectAtIndex:0] : nil;
}

NSArray *allOf(NSArray *items, NSArray *types, Class cls) {
  NSArray *const found = objectsIn(items, types, cls);
  return [found count] ? found : nil;
}

NSArray *itemsOf(NSArray *objects, NSArray *types) {
  NSMutableArray *const items = [NSMutableArray array];
  for (id object in objects)
    [items addObject:@{[types objectAtIndex:0] : object}];
  return items;
}

} // namespace

id qvdevice::valueOfType(NSString *type, id value) {
  if (![value isKindOfClass:[NSData class]]) return value;
  const bool isURL = [UIPasteboardTypeListURL containsObject:type];
  if (!isURL && ![UIPasteboardTypeListString containsObject:type]) return value;
  NSString *const text = [[[NSString alloc] initWithData:value encoding:NSUTF8StringEncoding] autorelease];
  id const meant = isURL && text ? [NSURL URLWithString:text] : text;
  return meant ? meant : value;
}

@implementation UIPasteboard (UIPasteboardObjects)

+ (void)load {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  UIPasteboardTypeListString = [@[ @"public.utf8-plain-text", @"public.text" ] retain];
  UIPasteboardTypeListURL = [@[ @"public.url" ] retain];
  [pool release];
}

- (NSString *)string {
  return firstOf([self items], UIPasteboardTypeListString, [NSString class]);
}

- (void)setString:(NSString *)string {
  [self setItems:string ? itemsOf(@[ string ], UIPasteboardTypeListString) : @[]];
}

- (NSURL *)URL {
  return firstOf([self items], UIPasteboardTypeListURL, [NSURL class]);
}

- (void)setURL:(NSURL *)url {
  [self setItems:url ? itemsOf(@[ url ], UIPasteboardTypeListURL) : @[]];
}

- (NSArray *)strings {
  return allOf([self items], UIPasteboardTypeListString, [NSString class]);
}

- (void)setStrings:(NSArray *)strings {
  [self setItems:itemsOf(strings, UIPasteboardTypeListString)];
}

- (NSArray *)URLs {
  return allOf([self items], UIPasteboardTypeListURL, [NSURL class]);
}

- (void)setURLs:(NSArray *)urls {
  [self setItems:itemsOf(urls, UIPasteboardTypeListURL)];
}

- (BOOL)hasStrings {
  return [self strings] != nil;
}

- (BOOL)hasURLs {
  return [self URLs] != nil;
}

@end
