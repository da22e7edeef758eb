// Items of every class, with every kind of value.
#include "Keychain.h"

namespace {

NSDictionary *itemOf(CFStringRef itemClass) {
  NSData *const bytes = [NSData dataWithBytes:"\x00\xff\x7f" length:3];
  return @{(id)kSecClass : (id)itemClass, (id)kSecAttrLabel : @"Vault — Ω", (id)kSecValueData : bytes};
}

struct Constant {
  CFStringRef constant;
  const char *value;
};

} // namespace

TEST_F(Keychain, KeepsItemsOfEveryClassApart) {
  const CFStringRef classes[] = {kSecClassGenericPassword, kSecClassInternetPassword, kSecClassCertificate,
                                 kSecClassKey, kSecClassIdentity};
  for (const CFStringRef each : classes)
    EXPECT_EQ(add(itemOf(each)), 0) << [(id)each UTF8String];
  for (const CFStringRef each : classes) {
    NSDictionary *item = nil;
    EXPECT_EQ(find(@{(id)kSecClass : (id)each, (id)kSecReturnAttributes : @YES, (id)kSecReturnData : @YES}, &item), 0);
    EXPECT_TRUE([[item objectForKey:@"labl"] isEqual:@"Vault — Ω"]) << [[item description] UTF8String];
    EXPECT_TRUE([[item objectForKey:@"v_Data"] isEqual:[NSData dataWithBytes:"\x00\xff\x7f" length:3]]);
  }
  EXPECT_EQ(remove(@{(id)kSecClass : (id)kSecClassKey}), 0);
  for (const CFStringRef each : classes)
    EXPECT_EQ(count((id)each), each == kSecClassKey ? 0u : 1u) << [(id)each UTF8String];
}

TEST_F(Keychain, TakesPasswordsWithoutDataAndNothingElse) {
  EXPECT_EQ(add(@{(id)kSecClass : (id)kSecClassGenericPassword}), 0);
  EXPECT_EQ(add(@{(id)kSecClass : (id)kSecClassInternetPassword}), 0);
  for (id each in @[ (id)kSecClassCertificate, (id)kSecClassKey, (id)kSecClassIdentity ])
    EXPECT_EQ(add(@{(id)kSecClass : each}), -50);
  NSData *data = nil;
  EXPECT_EQ(find(@{(id)kSecClass : (id)kSecClassGenericPassword, (id)kSecReturnData : @YES}, &data), 0);
  EXPECT_EQ([data length], 0u);
}

TEST_F(Keychain, KeepsValuesOfEveryKind) {
  NSDictionary *const key = with(
      itemOf(kSecClassKey), @{
        (id)kSecAttrKeyType : (id)kSecAttrKeyTypeRSA,
        (id)kSecAttrKeyClass : (id)kSecAttrKeyClassPrivate,
        (id)kSecAttrKeySizeInBits : @4096,
        (id)kSecAttrApplicationLabel : bytes("\x01\x02"),
        (id)kSecAttrApplicationTag : bytes(""),
        (id)kSecAttrIsPermanent : @YES,
        (id)kSecAttrCanSign : @NO,
        (id)kSecAttrAccessible : (id)kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly
      });
  EXPECT_EQ(add(key), 0);
  NSDictionary *found = nil;
  EXPECT_EQ(find(with(key, @{(id)kSecReturnAttributes : @YES}), &found), 0) << "by all that it was added with";
  EXPECT_TRUE([[found objectForKey:@"type"] isEqual:@42]);
  EXPECT_TRUE([[found objectForKey:@"kcls"] isEqual:@1]);
  EXPECT_TRUE([[found objectForKey:@"bsiz"] isEqual:@4096]);
  EXPECT_TRUE([[found objectForKey:@"klbl"] isEqual:bytes("\x01\x02")]);
  EXPECT_TRUE([[found objectForKey:@"atag"] isEqual:[NSData data]]);
  EXPECT_TRUE([[found objectForKey:@"perm"] isEqual:@YES]);
  EXPECT_TRUE([[found objectForKey:@"sign"] isEqual:@NO]);
  EXPECT_TRUE([[found objectForKey:@"pdmn"] isEqual:@"cku"]);
}

TEST_F(Keychain, TakesAccountsThatAreDataOrHoldWhatADatabaseCouldTrip) {
  NSString *const odd = @"'); DROP TABLE genp; --";
  NSDictionary *const item = @{(id)kSecClass : (id)kSecClassGenericPassword};
  EXPECT_EQ(add(with(item, @{(id)kSecAttrAccount : odd})), 0);
  EXPECT_EQ(add(with(item, @{(id)kSecAttrAccount : [odd dataUsingEncoding:NSUTF8StringEncoding]})), 0)
      << "the same bytes as data are another name";
  NSString *const nul = [NSString stringWithCharacters:(const unichar[]){'a', 0, 'b'} length:3];
  EXPECT_EQ(add(with(item, @{(id)kSecAttrAccount : nul})), 0);
  NSDictionary *found = nil;
  EXPECT_EQ(find(with(item, @{(id)kSecAttrAccount : nul, (id)kSecReturnAttributes : @YES}), &found), 0);
  EXPECT_EQ([[found objectForKey:@"acct"] length], 3u);
  EXPECT_EQ(count((id)kSecClassGenericPassword), 3u);
}

TEST_F(Keychain, HoldsTenThousandItemsAndMegabytes) {
  NSDictionary *const item = @{(id)kSecClass : (id)kSecClassGenericPassword, (id)kSecAttrService : @"many"};
  for (int i = 0; i < 10000; ++i) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    ASSERT_EQ(add(with(item, @{(id)kSecAttrAccount : [NSString stringWithFormat:@"%d", i]})), 0);
    [pool drain];
  }
  EXPECT_EQ(count((id)kSecClassGenericPassword), 10000u);
  EXPECT_EQ(remove(item), 0);
  NSData *const large = [NSMutableData dataWithLength:4 << 20];
  EXPECT_EQ(add(with(item, @{(id)kSecValueData : large})), 0);
  NSData *found = nil;
  find(with(item, @{(id)kSecReturnData : @YES}), &found);
  EXPECT_TRUE([found isEqual:large]);
}

TEST(KeychainConstants, HaveThePlatformsValues) {
  const Constant constants[] = {
      {kSecClass, "class"},
      {kSecClassGenericPassword, "genp"},
      {kSecClassInternetPassword, "inet"},
      {kSecClassCertificate, "cert"},
      {kSecClassKey, "keys"},
      {kSecClassIdentity, "idnt"},
      {kSecAttrAccount, "acct"},
      {kSecAttrService, "svce"},
      {kSecAttrServer, "srvr"},
      {kSecAttrAccessGroup, "agrp"},
      {kSecAttrAccessible, "pdmn"},
      {kSecAttrAccessibleWhenUnlocked, "ak"},
      {kSecAttrAccessibleAfterFirstUnlock, "ck"},
      {kSecAttrSynchronizable, "sync"},
      {kSecMatchLimit, "m_Limit"},
      {kSecMatchLimitOne, "m_LimitOne"},
      {kSecMatchLimitAll, "m_LimitAll"},
      {kSecReturnData, "r_Data"},
      {kSecReturnAttributes, "r_Attributes"},
      {kSecReturnRef, "r_Ref"},
      {kSecReturnPersistentRef, "r_PersistentRef"},
      {kSecValueData, "v_Data"},
      {kSecValueRef, "v_Ref"},
      {kSecValuePersistentRef, "v_PersistentRef"},
  };
  for (const Constant &each : constants)
    EXPECT_STREQ([(id)each.constant UTF8String], each.value);
  EXPECT_TRUE([(id)kCFBooleanTrue isEqual:@YES]);
  EXPECT_TRUE([(id)kCFBooleanFalse isEqual:@NO]);
}
