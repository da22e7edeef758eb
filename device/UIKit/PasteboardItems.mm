#import "PasteboardItems.h"

#import "PasteboardValues.h"

namespace qvdevice {

namespace {

NSString *typeFrom(const std::string &type) {
  return [[[NSString alloc] initWithBytes:type.data() length:type.size() encoding:NSUTF8StringEncoding] autorelease];
}

/// Nil, or what about the item no pasteboard takes.
NSString *encodeItem(id item, PasteboardItem &into) {
  if (![item isKindOfClass:[NSDictionary class]]) return @"an item that is no dictionary";
  for (id type in static_cast<NSDictionary *>(item)) {
    NSData *const name = [type isKindOfClass:[NSString class]] ? [type dataUsingEncoding:NSUTF8StringEncoding] : nil;
    if (!name) return @"a type that is no text";
    auto &entry = into.emplace_back(std::string(static_cast<const char *>([name bytes]), [name length]), std::string());
    NSString *const problem = encodePasteboardValue([item objectForKey:type], entry.second);
    if (problem) return [NSString stringWithFormat:@"%@ for the type %@", problem, type];
  }
  return nil;
}

} // namespace

std::vector<PasteboardItem> encodedItems(NSArray *items, SEL caller) {
  NSString *problem = items && ![items isKindOfClass:[NSArray class]] ? @"items that are no array" : nil;
  std::vector<PasteboardItem> encoded;
  if (!problem) {
    for (id item in items) {
      problem = encodeItem(item, encoded.emplace_back());
      if (problem) break;
    }
  }
  if (problem)
    [NSException raise:NSInvalidArgumentException
                format:@"-[UIPasteboard %@]: a pasteboard does not take %@", NSStringFromSelector(caller), problem];
  return encoded;
}

NSArray *itemsFrom(const std::vector<PasteboardItem> &items) {
  NSMutableArray *const all = [NSMutableArray arrayWithCapacity:items.size()];
  for (const PasteboardItem &each : items) {
    std::vector<id> types, values;
    for (const auto &[type, bytes] : each) {
      NSString *const name = typeFrom(type);
      id const value = decodePasteboardValue(bytes);
      if (!name || !value) return nil;
      types.push_back(name);
      values.push_back(value);
    }
    [all addObject:[NSDictionary dictionaryWithObjects:values.data() forKeys:types.data() count:types.size()]];
  }
  return [[all copy] autorelease];
}

NSSet *setOfTypes(const std::set<std::string> &types) {
  NSMutableSet *const all = [NSMutableSet set];
  for (const std::string &type : types) {
    NSString *const name = typeFrom(type);
    if (name) [all addObject:name];
  }
  return all;
}

} // namespace qvdevice
