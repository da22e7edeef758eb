#include "Wipe.h"

#import <Security/Security.h>

#include <dlfcn.h>

namespace {

/// What the library asked to have deleted, and how many lines it had logged by then.
struct Deletion {
  NSDictionary *query;
  std::size_t lines;
};
std::vector<Deletion> deletions;

const std::vector<std::string> fiveLines = {"3 genp keychain items deleted", "3 inet keychain items deleted",
                                            "3 cert keychain items deleted", "3 keys keychain items deleted",
                                            "3 idnt keychain items deleted"};

void add(CFStringRef itemClass, NSString *label, NSDictionary *more = @{}) {
  NSMutableDictionary *const item = [NSMutableDictionary dictionaryWithDictionary:more];
  [item setObject:(id)itemClass forKey:(id)kSecClass];
  [item setObject:label forKey:(id)kSecAttrLabel];
  [item setObject:[label dataUsingEncoding:NSUTF8StringEncoding] forKey:(id)kSecValueData];
  ASSERT_EQ(SecItemAdd((CFDictionaryRef)item, nullptr), 0);
}

NSUInteger count(CFStringRef itemClass) {
  NSDictionary *const query = @{
    (id)kSecClass : (id)itemClass,
    (id)kSecAttrSynchronizable : (id)kSecAttrSynchronizableAny,
    (id)kSecMatchLimit : (id)kSecMatchLimitAll,
    (id)kSecReturnAttributes : @YES
  };
  CFTypeRef found = nullptr;
  SecItemCopyMatching((CFDictionaryRef)query, &found);
  return [[(id)found autorelease] count];
}

} // namespace

// This program's own comes before the device's, to which it goes on.
OSStatus SecItemDelete(CFDictionaryRef query) {
  static const auto device = reinterpret_cast<OSStatus (*)(CFDictionaryRef)>(dlsym(RTLD_NEXT, "SecItemDelete"));
  deletions.push_back({[(NSDictionary *)query copy], wipe::log().size()});
  return device(query);
}

TEST_F(Wipe, AsksForTheDeletionOfGenericPasswordsFiveTimesEachTimeBeforeItsLine) {
  [wipe::util() _cleanUpKeychain];
  ASSERT_EQ(deletions.size(), 5u);
  for (std::size_t i = 0; i < deletions.size(); ++i) {
    EXPECT_TRUE([deletions[i].query isEqual:@{(id)kSecClass : (id)kSecClassGenericPassword}]) << i;
    EXPECT_EQ(deletions[i].lines, i);
  }
}

TEST_F(Wipe, DeletesGenericPasswordsAndNoOtherKeychainItemsWithALineForEachClass) {
  for (NSString *account in @[ @"ann", @"bob", @"cem" ])
    add(kSecClassGenericPassword, account, @{(id)kSecAttrAccount : account, (id)kSecAttrService : @"mail"});
  for (const CFStringRef each : {kSecClassInternetPassword, kSecClassCertificate, kSecClassKey, kSecClassIdentity})
    add(each, @"stays");
  [wipe::util() _cleanUpKeychain];
  EXPECT_EQ(wipe::log(), fiveLines);
  EXPECT_EQ(count(kSecClassGenericPassword), 0u);
  for (const CFStringRef each : {kSecClassInternetPassword, kSecClassCertificate, kSecClassKey, kSecClassIdentity})
    EXPECT_EQ(count(each), 1u) << [(id)each UTF8String];
}

TEST_F(Wipe, OfAnEmptyKeychainLogsTheSameFiveLinesEveryTime) {
  [wipe::util() _cleanUpKeychain];
  EXPECT_EQ(wipe::log(), fiveLines);
  wipe::captureLog();
  [wipe::util() _cleanUpKeychain];
  EXPECT_EQ(wipe::log(), fiveLines);
}

TEST_F(Wipe, LeavesGenericPasswordsThatAreSharedWithTheUsersOtherDevices) {
  add(kSecClassGenericPassword, @"shared", @{(id)kSecAttrSynchronizable : @YES});
  add(kSecClassGenericPassword, @"own");
  [wipe::util() _cleanUpKeychain];
  EXPECT_EQ(count(kSecClassGenericPassword), 1u);
}
