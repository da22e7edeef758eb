#import "Values.h"

#include "Policies.h"

namespace zorbel {

static NSString *stringFrom(const std::string &text) {
  return [[[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding] autorelease];
}

static id dictionaryFrom(const nlohmann::json &object, bool withData) {
  if (withData && object.size() == 1 && object.contains("base64")) {
    const std::string data = decodeBase64(object["base64"].get<std::string>()).value();
    return [NSData dataWithBytes:data.data() length:data.size()];
  }
  NSMutableDictionary *const dictionary = [NSMutableDictionary dictionary];
  for (const auto &[key, value] : object.items()) {
    [dictionary setObject:objectFrom(value, withData) forKey:stringFrom(key)];
  }
  return dictionary;
}

id objectFrom(const nlohmann::json &value, bool withData) {
  switch (value.type()) {
  case nlohmann::json::value_t::string:
    return stringFrom(value.get<std::string>());
  case nlohmann::json::value_t::boolean:
    return [NSNumber numberWithBool:value.get<bool>()];
  case nlohmann::json::value_t::number_integer:
    return [NSNumber numberWithLongLong:value.get<long long>()];
  case nlohmann::json::value_t::number_unsigned:
    return [NSNumber numberWithUnsignedLongLong:value.get<unsigned long long>()];
  case nlohmann::json::value_t::number_float:
    return [NSNumber numberWithDouble:value.get<double>()];
  case nlohmann::json::value_t::object:
    return dictionaryFrom(value, withData);
  case nlohmann::json::value_t::array: {
    NSMutableArray *const array = [NSMutableArray array];
    for (const auto &element : value) {
      [array addObject:objectFrom(element, withData)];
    }
    return array;
  }
  default:
    return [NSNull null];
  }
}

} // namespace zorbel
