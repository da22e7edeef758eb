#import <Foundation/Foundation.h>
#import <Security/Security.h>

#import "Security/KeychainRequest.h"

#include <mutex>

#include "container/DeviceFolder.h"

using namespace qvdevice;

namespace {

// An app that has a device to itself, without a folder for it, has a keychain for as long as it runs: in its container
// the items would go with its files, which is what a keychain is there to prevent.
std::string keychainPath() {
  const std::string &device = deviceFolder();
  return device.empty() ? std::string() : device + "/keychain.db";
}

struct Keychain {
  std::mutex lock;
  KeychainDatabase database{keychainPath()};
};

Keychain &keychain() {
  static Keychain &only = *new Keychain;
  return only;
}

// Calls `use` with the keychain's database while no other thread has it.
template <class Use> Outcome withKeychain(Use use) {
  const std::lock_guard held(keychain().lock);
  return use(keychain().database);
}

OSStatus statusOf(Outcome outcome) {
  switch (outcome) {
  case Outcome::done:
    return errSecSuccess;
  case Outcome::notFound:
    return errSecItemNotFound;
  case Outcome::duplicate:
    return errSecDuplicateItem;
  case Outcome::unavailable:
    return errSecNotAvailable;
  }
  return errSecNotAvailable;
}

class Pool {
public:
  Pool() : pool_([[NSAutoreleasePool alloc] init]) {}
  Pool(const Pool &) = delete;
  Pool &operator=(const Pool &) = delete;
  ~Pool() { [pool_ drain]; }

private:
  NSAutoreleasePool *pool_;
};

double now() { return [NSDate timeIntervalSinceReferenceDate]; }

NSData *dataOf(const std::string &bytes) { return [NSData dataWithBytes:bytes.data() length:bytes.size()]; }

NSString *textOf(const std::string &characters) {
  return [[[NSString alloc] initWithData:dataOf(characters) encoding:NSUTF8StringEncoding] autorelease];
}

// Nil for no value.
id objectOf(const Value &value, AttributeKind kind) {
  if (const auto *number = std::get_if<std::int64_t>(&value)) {
    if (kind == AttributeKind::flag) return [NSNumber numberWithBool:*number != 0];
    return [NSNumber numberWithLongLong:*number];
  }
  if (const auto *date = std::get_if<double>(&value)) return [NSDate dateWithTimeIntervalSinceReferenceDate:*date];
  if (const auto *text = std::get_if<Text>(&value)) return textOf(text->characters);
  if (const auto *bytes = std::get_if<Bytes>(&value)) return dataOf(bytes->bytes);
  return nil;
}

NSData *valueData(const Item &item) {
  for (const auto &each : item.values)
    if (each.first == "v_Data") return objectOf(each.second, AttributeKind::data);
  return nil;
}

void addAttributes(NSMutableDictionary *dictionary, const Item &item) {
  for (const auto &each : item.values) {
    const Attribute *const attribute = attributeNamed(*item.itemClass, each.first);
    id const object = attribute ? objectOf(each.second, attribute->kind) : nil;
    if (object) [dictionary setObject:object forKey:[NSString stringWithUTF8String:attribute->key]];
  }
}

// What a request asks to be told of an item: a dictionary where it asks for more than one thing.
id answerOf(const Item &item, const KeychainRequest &request) {
  NSData *const data = valueData(item);
  NSData *const reference = persistentReference(item);
  QVDeviceKeychainItem *const object =
      [[[QVDeviceKeychainItem alloc] initWithPersistentReference:reference] autorelease];
  const int kinds =
      request.returnsData + request.returnsAttributes + request.returnsReference + request.returnsPersistentReference;
  if (kinds == 1 && request.returnsData) return data ? data : [NSData data];
  if (kinds == 1 && request.returnsReference) return object;
  if (kinds == 1 && request.returnsPersistentReference) return reference;
  NSMutableDictionary *const answer = [NSMutableDictionary dictionary];
  if (request.returnsAttributes) addAttributes(answer, item);
  if (request.returnsData && data) [answer setObject:data forKey:(id)kSecValueData];
  if (request.returnsReference) [answer setObject:object forKey:(id)kSecValueRef];
  if (request.returnsPersistentReference) [answer setObject:reference forKey:(id)kSecValuePersistentRef];
  return answer;
}

bool wantsAnswer(const KeychainRequest &request) {
  return request.returnsData || request.returnsAttributes || request.returnsReference ||
         request.returnsPersistentReference;
}

void answer(CFTypeRef *result, const std::vector<Item> &items, const KeychainRequest &request) {
  if (!result || !wantsAnswer(request)) return;
  if (request.one) {
    *result = (CFTypeRef)[answerOf(items.front(), request) retain];
    return;
  }
  NSMutableArray *const answers = [[NSMutableArray alloc] init];
  for (const Item &item : items)
    [answers addObject:answerOf(item, request)];
  *result = (CFTypeRef)answers;
}

} // namespace

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef *result) {
  const Pool pool;
  KeychainRequest request;
  if (const OSStatus status = request.read((NSDictionary *)attributes, Dictionary::itemToAdd)) return status;
  if (!request.has("v_Data") && !request.itemClass->mayBeEmpty) return errSecParam;
  Values values = request.values;
  std::erase_if(values, [](const auto &each) { return each.first == "cdat" || each.first == "mdat"; });
  const double time = now();
  values.emplace_back("cdat", time);
  values.emplace_back("mdat", time);
  if (!request.has("agrp")) values.emplace_back("agrp", Text{[KeychainRequest::accessGroup() UTF8String]});
  if (!request.has("pdmn")) values.emplace_back("pdmn", Text{[(id)kSecAttrAccessibleWhenUnlocked UTF8String]});
  std::vector<Item> added;
  const Outcome outcome = withKeychain([&](KeychainDatabase &database) {
    std::int64_t row = 0;
    const Outcome done = database.add(*request.itemClass, values, row);
    return done == Outcome::done ? database.find({request.itemClass, {}, row, false}, 1, added) : done;
  });
  if (outcome == Outcome::done) answer(result, added, request);
  return statusOf(outcome);
}

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef *result) {
  const Pool pool;
  if (result) *result = nullptr;
  KeychainRequest request;
  if (const OSStatus status = request.read((NSDictionary *)query, Dictionary::itemsToFind)) return status;
  std::vector<Item> items;
  const Outcome outcome = withKeychain(
      [&](KeychainDatabase &database) { return database.find(request.conditions(), request.limit, items); });
  if (outcome == Outcome::done) answer(result, items, request);
  return statusOf(outcome);
}

OSStatus SecItemUpdate(CFDictionaryRef query, CFDictionaryRef attributesToUpdate) {
  const Pool pool;
  KeychainRequest request;
  if (const OSStatus status = request.read((NSDictionary *)query, Dictionary::itemsToUpdate)) return status;
  KeychainRequest update;
  if (const OSStatus status = update.read((NSDictionary *)attributesToUpdate, Dictionary::update, request.itemClass))
    return status;
  if (update.values.empty()) return errSecParam;
  Values values = update.values;
  std::erase_if(values, [](const auto &each) { return each.first == "mdat"; });
  values.emplace_back("mdat", now());
  return statusOf(
      withKeychain([&](KeychainDatabase &database) { return database.update(request.conditions(), values); }));
}

OSStatus SecItemDelete(CFDictionaryRef query) {
  const Pool pool;
  KeychainRequest request;
  if (const OSStatus status = request.read((NSDictionary *)query, Dictionary::itemsToDelete)) return status;
  return statusOf(withKeychain([&](KeychainDatabase &database) { return database.remove(request.conditions()); }));
}
