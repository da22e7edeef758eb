#import <UIKit/UIPasteboard.h>

#import "Foundation/PropertyLists.h"
#import "PasteboardKinds.h"

using namespace qvdevice;

namespace {

NSData *dataOf(id value) {
  if (!value || [value isKindOfClass:[NSData class]]) return value;
  if ([value isKindOfClass:[NSURL class]]) value = [value absoluteString];
  if ([value isKindOfClass:[NSString class]]) return [value dataUsingEncoding:NSUTF8StringEncoding];
  // Not what holds a URL somewhere.
  if (!isPropertyList(value)) return nil;
  return [NSPropertyListSerialization dataWithPropertyList:value format:NSPropertyListBinaryFormat_v1_0 options:0
                                                     error:NULL];
}

} // namespace

@implementation UIPasteboard (UIPasteboardRepresentations)

- (NSDictionary *)qvdevice_firstItem {
  NSArray *const items = [self items];
  return [items count] ? [items objectAtIndex:0] : nil;
}

- (NSArray *)qvdevice_itemsInSet:(NSIndexSet *)itemSet {
  NSArray *const items = [self items];
  if (!itemSet) return items;
  NSMutableArray *const chosen = [NSMutableArray array];
  for (NSUInteger index = 0; index < [items count]; ++index) {
    if ([itemSet containsIndex:index]) [chosen addObject:[items objectAtIndex:index]];
  }
  return chosen;
}

- (NSArray *)pasteboardTypes {
  NSDictionary *const item = [self qvdevice_firstItem];
  return item ? [item allKeys] : @[];
}

- (BOOL)containsPasteboardTypes:(NSArray *)types {
  return [self containsPasteboardTypes:types inItemSet:[NSIndexSet indexSetWithIndex:0]];
}

- (NSData *)dataForPasteboardType:(NSString *)type {
  return dataOf([[self qvdevice_firstItem] objectForKey:type]);
}

- (id)valueForPasteboardType:(NSString *)type {
  return valueOfType(type, [[self qvdevice_firstItem] objectForKey:type]);
}

- (void)setValue:(id)value forPasteboardType:(NSString *)type {
  [self setItems:value && type ? @[ @{type : value} ] : @[]];
}

- (void)setData:(NSData *)data forPasteboardType:(NSString *)type {
  [self setValue:data forPasteboardType:type];
}

- (NSArray *)pasteboardTypesForItemSet:(NSIndexSet *)itemSet {
  NSMutableArray *const types = [NSMutableArray array];
  for (NSDictionary *item in [self qvdevice_itemsInSet:itemSet])
    [types addObject:[item allKeys]];
  return types;
}

- (BOOL)containsPasteboardTypes:(NSArray *)types inItemSet:(NSIndexSet *)itemSet {
  for (NSDictionary *item in [self qvdevice_itemsInSet:itemSet]) {
    if ([[NSSet setWithArray:types] intersectsSet:[NSSet setWithArray:[item allKeys]]]) return YES;
  }
  return NO;
}

- (NSIndexSet *)itemSetWithPasteboardTypes:(NSArray *)types {
  NSMutableIndexSet *const found = [NSMutableIndexSet indexSet];
  NSArray *const items = [self items];
  for (NSUInteger index = 0; index < [items count]; ++index) {
    if ([[NSSet setWithArray:types] intersectsSet:[NSSet setWithArray:[[items objectAtIndex:index] allKeys]]])
      [found addIndex:index];
  }
  return found;
}

- (NSArray *)valuesForPasteboardType:(NSString *)type inItemSet:(NSIndexSet *)itemSet {
  NSMutableArray *const values = [NSMutableArray array];
  for (NSDictionary *item in [self qvdevice_itemsInSet:itemSet]) {
    id const value = valueOfType(type, [item objectForKey:type]);
    if (value) [values addObject:value];
  }
  return values;
}

- (NSArray *)dataForPasteboardType:(NSString *)type inItemSet:(NSIndexSet *)itemSet {
  NSMutableArray *const all = [NSMutableArray array];
  for (NSDictionary *item in [self qvdevice_itemsInSet:itemSet]) {
    NSData *const data = dataOf([item objectForKey:type]);
    if (data) [all addObject:data];
  }
  return all;
}

@end
