#import "Security/KeychainRequest.h"

#include <algorithm>
#include <array>
#include <limits>

#include "container/BundleIdentifier.h"

namespace qvdevice {
namespace {

constexpr std::array<std::string_view, 7> accessibilities = {"ak", "ck", "dk", "akpu", "aku", "cku", "dku"};

std::string utf8(NSString *text) {
  NSData *const data = [text dataUsingEncoding:NSUTF8StringEncoding];
  return std::string(static_cast<const char *>([data bytes]), [data length]);
}

bool isText(id value) { return [value isKindOfClass:[NSString class]]; }
bool isNumber(id value) { return [value isKindOfClass:[NSNumber class]]; }

bool isData(id value) { return [value isKindOfClass:[NSData class]]; }
Bytes bytesOf(NSData *data) { return {std::string(static_cast<const char *>([data bytes]), [data length])}; }

// Some constants for numbers are strings of digits.
bool isDigits(id value) {
  const std::string text = isText(value) ? utf8(value) : std::string();
  return !text.empty() && text.size() < 10 && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// No value when it is not of that kind.
Value valueOf(id value, AttributeKind kind) {
  switch (kind) {
  case AttributeKind::any:
    if (isData(value)) return bytesOf(value);
    [[fallthrough]];
  case AttributeKind::text:
    return isText(value) ? Value(Text{utf8(value)}) : Value();
  case AttributeKind::data:
    return isData(value) ? Value(bytesOf(value)) : Value();
  case AttributeKind::number:
    if (isNumber(value) || isDigits(value)) return static_cast<std::int64_t>([value longLongValue]);
    return {};
  case AttributeKind::flag:
    return isNumber(value) ? Value(static_cast<std::int64_t>([value boolValue] ? 1 : 0)) : Value();
  case AttributeKind::date:
    return [value isKindOfClass:[NSDate class]] ? Value([value timeIntervalSinceReferenceDate]) : Value();
  }
  return {};
}

} // namespace

NSString *KeychainRequest::accessGroup() {
  static const std::string &identifier = *new std::string(bundleIdentifier());
  return identifier.empty() ? [[NSProcessInfo processInfo] processName]
                            : [NSString stringWithUTF8String:identifier.c_str()];
}

bool KeychainRequest::has(std::string_view column) const {
  return std::ranges::any_of(values, [&](const auto &each) { return each.first == column; });
}

Conditions KeychainRequest::conditions() const {
  Conditions found{itemClass, values, row, caseInsensitive};
  if (!has("agrp")) found.equal.emplace_back("agrp", Text{utf8(accessGroup())});
  // What is shared with the user's other devices is meant only where that is said.
  if (!has("sync") && !anySynchronizable && !row) found.equal.emplace_back("sync", std::int64_t{0});
  return found;
}

OSStatus KeychainRequest::read(NSDictionary *dictionary, Dictionary kind, const ItemClass *given) {
  if (![dictionary isKindOfClass:[NSDictionary class]]) return errSecParam;
  itemClass = given;
  if (!itemClass) {
    if (const OSStatus status = readClass(dictionary, kind)) return status;
  }
  for (id key in dictionary) {
    if (!isText(key)) return errSecParam;
    if (const OSStatus status = readEntry(utf8(key), [dictionary objectForKey:key], kind)) return status;
  }
  return errSecSuccess;
}

OSStatus KeychainRequest::readClass(NSDictionary *dictionary, Dictionary kind) {
  id const name = [dictionary objectForKey:(id)kSecClass];
  if (isText(name)) itemClass = itemClassNamed(utf8(name));
  if (name && !itemClass) return errSecParam;
  id persistent = [dictionary objectForKey:(id)kSecValuePersistentRef];
  id const reference = [dictionary objectForKey:(id)kSecValueRef];
  if (!persistent && [reference isKindOfClass:[QVDeviceKeychainItem class]])
    persistent = [reference persistentReference];
  if (persistent || reference) {
    const ItemClass *meant = nullptr;
    std::int64_t number = 0;
    if (kind == Dictionary::itemToAdd || !readPersistentReference(persistent, meant, number)) return errSecParam;
    if (itemClass && itemClass != meant) return errSecItemNotFound;
    itemClass = meant;
    row = number;
  }
  return itemClass ? errSecSuccess : errSecParam;
}

OSStatus KeychainRequest::readEntry(const std::string &key, id value, Dictionary kind) {
  if (key == "class") return kind == Dictionary::update ? errSecParam : errSecSuccess;
  if (key == "v_PersistentRef" || key == "v_Ref") return kind == Dictionary::update ? errSecParam : errSecSuccess;
  if (key == "v_Data") {
    if (!isData(value)) return errSecParam;
    values.emplace_back(key, bytesOf(value));
    return errSecSuccess;
  }
  if (key.starts_with("r_")) return readReturn(key, value, kind);
  if (key == "m_Limit") return readLimit(value, kind);
  if (key == "m_CaseInsensitive") {
    if (!isNumber(value) || kind == Dictionary::itemToAdd || kind == Dictionary::update) return errSecParam;
    caseInsensitive = [value boolValue];
    return errSecSuccess;
  }
  if (key.starts_with("m_")) return errSecUnimplemented;
  // How the user is asked: nobody is.
  if (key.starts_with("u_")) return errSecSuccess;
  const Attribute *const attribute = attributeNamed(*itemClass, key);
  return attribute ? readAttribute(*attribute, value, kind) : errSecNoSuchAttr;
}

OSStatus KeychainRequest::readReturn(const std::string &key, id value, Dictionary kind) {
  if (!isNumber(value) || (kind != Dictionary::itemToAdd && kind != Dictionary::itemsToFind)) return errSecParam;
  const bool wanted = [value boolValue];
  if (key == "r_Data")
    returnsData = wanted;
  else if (key == "r_Attributes")
    returnsAttributes = wanted;
  else if (key == "r_Ref")
    returnsReference = wanted;
  else if (key == "r_PersistentRef")
    returnsPersistentReference = wanted;
  else
    return errSecParam;
  return errSecSuccess;
}

OSStatus KeychainRequest::readLimit(id value, Dictionary kind) {
  if (kind != Dictionary::itemsToFind) return errSecParam;
  if (isNumber(value) && [value longLongValue] > 0) {
    limit = [value longLongValue];
    one = limit == 1;
    return errSecSuccess;
  }
  if (!isText(value)) return errSecParam;
  one = [value isEqualToString:(id)kSecMatchLimitOne];
  if (!one && ![value isEqualToString:(id)kSecMatchLimitAll]) return errSecParam;
  limit = one ? 1 : std::numeric_limits<std::int64_t>::max();
  return errSecSuccess;
}

OSStatus KeychainRequest::readAttribute(const Attribute &attribute, id value, Dictionary kind) {
  const std::string_view key = attribute.key;
  if (key == "sync" && isText(value) && [value isEqualToString:(id)kSecAttrSynchronizableAny]) {
    if (kind == Dictionary::itemToAdd || kind == Dictionary::update) return errSecParam;
    anySynchronizable = true;
    return errSecSuccess;
  }
  Value read = valueOf(value, attribute.kind);
  if (std::holds_alternative<std::monostate>(read)) return errSecParam;
  if (key == "agrp" && ![value isEqualToString:accessGroup()]) return errSecMissingEntitlement;
  if (key == "pdmn" && std::ranges::find(accessibilities, utf8(value)) == accessibilities.end()) return errSecParam;
  values.emplace_back(key, std::move(read));
  return errSecSuccess;
}

NSData *persistentReference(const Item &item) {
  NSMutableData *const reference = [NSMutableData dataWithBytes:item.itemClass->name length:4];
  [reference appendBytes:&item.row length:sizeof item.row];
  return reference;
}

bool readPersistentReference(id reference, const ItemClass *&itemClass, std::int64_t &row) {
  if (!isData(reference) || [reference length] != 4 + sizeof row) return false;
  itemClass = itemClassNamed(bytesOf(reference).bytes.substr(0, 4));
  [reference getBytes:&row range:NSMakeRange(4, sizeof row)];
  return itemClass != nullptr;
}

} // namespace qvdevice

@implementation QVDeviceKeychainItem

- (instancetype)initWithPersistentReference:(NSData *)reference {
  if ((self = [super init])) _persistentReference = [reference copy];
  return self;
}

- (void)dealloc {
  [_persistentReference release];
  [super dealloc];
}

- (NSData *)persistentReference {
  return _persistentReference;
}

@end
