#include "container/Json.h"

#include <fcntl.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string>

#include "container/Refusal.h"

namespace qvdevice {

namespace {

using OrderedJson = nlohmann::ordered_json;

OrderedJson numberFrom(NSNumber *number) {
  switch (*[number objCType]) {
  case 'f':
  case 'd':
    return [number doubleValue];
  case 'Q':
  case 'L':
    return [number unsignedLongLongValue];
  case 'B':
  case 'C': // BOOL
    if ([number intValue] == 0 || [number intValue] == 1) return [number boolValue] != NO;
    return [number intValue];
  default:
    return [number longLongValue];
  }
}

OrderedJson dictionaryFrom(NSDictionary *dictionary) {
  OrderedJson object = OrderedJson::object();
  id const kind = [dictionary objectForKey:@"kind"];
  if (kind != nil) object["kind"] = jsonFrom(kind);
  for (NSString *key in [[dictionary allKeys] sortedArrayUsingSelector:@selector(compare:)]) {
    if (![key isEqual:@"kind"]) object[[key UTF8String]] = jsonFrom([dictionary objectForKey:key]);
  }
  return object;
}

} // namespace

OrderedJson jsonFrom(id object) {
  if (object == nil || object == [NSNull null]) return nullptr;
  if ([object isKindOfClass:[NSString class]]) return std::string([object UTF8String]);
  if ([object isKindOfClass:[NSNumber class]]) return numberFrom(object);
  if ([object isKindOfClass:[NSDictionary class]]) return dictionaryFrom(object);
  if ([object isKindOfClass:[NSArray class]]) {
    OrderedJson array = OrderedJson::array();
    for (id element in static_cast<NSArray *>(object))
      array.push_back(jsonFrom(element));
    return array;
  }
  return std::string([[object description] UTF8String]);
}

id objectFrom(const nlohmann::json &value) {
  using Type = nlohmann::json::value_t;
  switch (value.type()) {
  case Type::string:
    return [NSString stringWithUTF8String:value.get_ref<const std::string &>().c_str()];
  case Type::boolean:
    return [NSNumber numberWithBool:value.get<bool>() ? YES : NO];
  case Type::number_integer:
    return [NSNumber numberWithLongLong:value.get<long long>()];
  case Type::number_unsigned:
    return [NSNumber numberWithUnsignedLongLong:value.get<unsigned long long>()];
  case Type::number_float:
    return [NSNumber numberWithDouble:value.get<double>()];
  case Type::array: {
    NSMutableArray *const array = [NSMutableArray arrayWithCapacity:value.size()];
    for (const auto &element : value)
      [array addObject:objectFrom(element)];
    return array;
  }
  case Type::object: {
    NSMutableDictionary *const dictionary = [NSMutableDictionary dictionaryWithCapacity:value.size()];
    for (const auto &[key, element] : value.items()) {
      [dictionary setObject:objectFrom(element) forKey:[NSString stringWithUTF8String:key.c_str()]];
    }
    return dictionary;
  }
  default:
    return [NSNull null];
  }
}

int descriptorFromEnvironment(const char *variable) {
  const char *const text = std::getenv(variable);
  if (text == nullptr) return -1;
  int descriptor = -1;
  const char *const end = text + std::strlen(text);
  const auto [rest, error] = std::from_chars(text, end, descriptor);
  if (error != std::errc() || rest != end || descriptor < 0 || ::fcntl(descriptor, F_GETFD) < 0) {
    refuse(std::string(variable) + " is \"" + text + "\", which is not the number of an open descriptor");
  }
  return descriptor;
}

} // namespace qvdevice
