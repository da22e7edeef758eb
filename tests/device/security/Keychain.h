// A keychain of the test's own: it has no device's folder, so that its items are gone with its process.
#pragma once

#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include <string>

#include <gtest/gtest.h>

class Keychain : public testing::Test {
protected:
  void SetUp() override { pool_ = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override {
    for (id each in @[
           (id)kSecClassGenericPassword, (id)kSecClassInternetPassword, (id)kSecClassCertificate, (id)kSecClassKey,
           (id)kSecClassIdentity
         ])
      remove(@{(id)kSecClass : each, (id)kSecAttrSynchronizable : (id)kSecAttrSynchronizableAny});
    [pool_ drain];
  }

  static OSStatus add(NSDictionary *attributes, id *result = nullptr) {
    CFTypeRef answer = nullptr;
    const OSStatus status = SecItemAdd((CFDictionaryRef)attributes, result ? &answer : nullptr);
    if (result) *result = [(id)answer autorelease];
    return status;
  }
  static OSStatus find(NSDictionary *query, id *result = nullptr) {
    CFTypeRef answer = (CFTypeRef)0x1;
    const OSStatus status = SecItemCopyMatching((CFDictionaryRef)query, result ? &answer : nullptr);
    if (result) *result = [(id)answer autorelease];
    return status;
  }
  static OSStatus update(NSDictionary *query, NSDictionary *attributes) {
    return SecItemUpdate((CFDictionaryRef)query, (CFDictionaryRef)attributes);
  }
  static OSStatus remove(NSDictionary *query) { return SecItemDelete((CFDictionaryRef)query); }

  static NSData *bytes(const char *text) { return [NSData dataWithBytes:text length:strlen(text)]; }

  /// How many items of the class there are, shared with other devices or not.
  static NSUInteger count(id itemClass) {
    NSArray *all = nil;
    find(
        @{
          (id)kSecClass : itemClass,
          (id)kSecAttrSynchronizable : (id)kSecAttrSynchronizableAny,
          (id)kSecMatchLimit : (id)kSecMatchLimitAll,
          (id)kSecReturnPersistentRef : @YES
        },
        &all);
    return [all count];
  }

private:
  NSAutoreleasePool *pool_ = nil;
};

/// The dictionary with these entries instead of or besides its own.
inline NSDictionary *with(NSDictionary *dictionary, NSDictionary *entries) {
  NSMutableDictionary *const both = [NSMutableDictionary dictionaryWithDictionary:dictionary];
  [both addEntriesFromDictionary:entries];
  return both;
}
