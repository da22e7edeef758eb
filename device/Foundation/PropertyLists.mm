#import "PropertyLists.h"

namespace qvdevice {

// Debian's own check answers YES to everything and its writer then stores descriptions.
bool isPropertyList(id object) {
  if ([object isKindOfClass:[NSString class]] || [object isKindOfClass:[NSNumber class]] ||
      [object isKindOfClass:[NSData class]] || [object isKindOfClass:[NSDate class]])
    return true;
  if ([object isKindOfClass:[NSArray class]]) {
    for (id element in object)
      if (!isPropertyList(element)) return false;
    return true;
  }
  if ([object isKindOfClass:[NSDictionary class]]) {
    for (id key in object)
      if (![key isKindOfClass:[NSString class]] || !isPropertyList([object objectForKey:key])) return false;
    return true;
  }
  return false;
}

NSData *propertyListData(id object) {
  if (!isPropertyList(object)) return nil;
  return [NSPropertyListSerialization dataWithPropertyList:object format:NSPropertyListXMLFormat_v1_0 options:0
                                                     error:NULL];
}

} // namespace qvdevice
