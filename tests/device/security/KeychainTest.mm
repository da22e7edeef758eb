// The four calls, and what they refuse.
#include "Keychain.h"

namespace {

NSDictionary *password(NSString *account, NSString *service = @"mail") {
  return @{(id)kSecClass : (id)kSecClassGenericPassword, (id)kSecAttrAccount : account, (id)kSecAttrService : service};
}

NSDictionary *secret(NSString *account, const char *data) {
  return with(password(account), @{(id)kSecValueData : [NSData dataWithBytes:data length:strlen(data)]});
}

} // namespace

TEST_F(Keychain, GivesBackTheDataOfWhatWasAdded) {
  EXPECT_EQ(add(secret(@"ann", "one")), 0);
  NSData *data = nil;
  EXPECT_EQ(find(with(password(@"ann"), @{(id)kSecReturnData : @YES}), &data), 0);
  EXPECT_TRUE([data isEqual:bytes("one")]);
}

TEST_F(Keychain, WithoutAMatchAnswersItemNotFoundAndNothing) {
  id result = @"untouched";
  EXPECT_EQ(find(with(password(@"ann"), @{(id)kSecReturnData : @YES}), &result), -25300);
  EXPECT_EQ(result, nil);
  EXPECT_EQ(remove(password(@"ann")), -25300);
  EXPECT_EQ(update(password(@"ann"), @{(id)kSecValueData : bytes("x")}), -25300);
}

TEST_F(Keychain, RefusesAnItemWithTheSamePrimaryAttributesAndKeepsTheFirst) {
  EXPECT_EQ(add(secret(@"ann", "one")), 0);
  EXPECT_EQ(add(secret(@"ann", "two")), -25299);
  EXPECT_EQ(add(with(secret(@"ann", "two"), @{(id)kSecAttrComment : @"differs in what does not name it"})), -25299);
  NSData *data = nil;
  find(with(password(@"ann"), @{(id)kSecReturnData : @YES}), &data);
  EXPECT_TRUE([data isEqual:bytes("one")]);
  EXPECT_EQ(count((id)kSecClassGenericPassword), 1u);
}

TEST_F(Keychain, TakesAnItemThatDiffersInOnePrimaryAttribute) {
  EXPECT_EQ(add(password(@"ann", @"mail")), 0);
  EXPECT_EQ(add(password(@"ann", @"web")), 0);
  EXPECT_EQ(add(password(@"bob", @"mail")), 0);
  EXPECT_EQ(add(with(password(@"ann", @"mail"), @{(id)kSecAttrSynchronizable : @YES})), 0);
  EXPECT_EQ(add(@{(id)kSecClass : (id)kSecClassGenericPassword}), 0) << "no attribute at all is a name too";
  EXPECT_EQ(add(@{(id)kSecClass : (id)kSecClassGenericPassword}), -25299);
  EXPECT_EQ(count((id)kSecClassGenericPassword), 5u);
}

TEST_F(Keychain, NamesThePortOfAnInternetPasswordAmongItsPrimaryAttributes) {
  NSDictionary *const web = @{
    (id)kSecClass : (id)kSecClassInternetPassword,
    (id)kSecAttrServer : @"example.com",
    (id)kSecAttrProtocol : (id)kSecAttrProtocolHTTPS,
    (id)kSecAttrPort : @443,
    (id)kSecAttrPath : @"/login",
    (id)kSecAttrAccount : @"ann"
  };
  EXPECT_EQ(add(web), 0);
  EXPECT_EQ(add(with(web, @{(id)kSecAttrPort : @8443})), 0);
  EXPECT_EQ(add(with(web, @{(id)kSecAttrLabel : @"another label"})), -25299);
  EXPECT_EQ(find(with(web, @{(id)kSecAttrPort : @8443})), 0);
  EXPECT_EQ(find(with(web, @{(id)kSecAttrPort : @80})), -25300);
}

TEST_F(Keychain, FindsOneItemUnlessAskedForMore) {
  for (NSString *account in @[ @"ann", @"bob", @"cem" ])
    add(secret(account, "data"));
  NSDictionary *const all =
      @{(id)kSecClass : (id)kSecClassGenericPassword,
        (id)kSecAttrService : @"mail",
        (id)kSecReturnAttributes : @YES};
  NSDictionary *one = nil;
  EXPECT_EQ(find(all, &one), 0);
  ASSERT_TRUE([one isKindOfClass:[NSDictionary class]]);
  EXPECT_TRUE([[one objectForKey:@"acct"] isEqual:@"ann"]);
  NSArray *some = nil;
  EXPECT_EQ(find(with(all, @{(id)kSecMatchLimit : @2}), &some), 0);
  EXPECT_TRUE([[some valueForKey:@"acct"] isEqual:(@[ @"ann", @"bob" ])]);
  EXPECT_EQ(find(with(all, @{(id)kSecMatchLimit : (id)kSecMatchLimitAll}), &some), 0);
  EXPECT_TRUE([[some valueForKey:@"acct"] isEqual:(@[ @"ann", @"bob", @"cem" ])]);
  EXPECT_EQ(find(with(all, @{(id)kSecMatchLimit : (id)kSecMatchLimitOne}), &one), 0);
  EXPECT_TRUE([one isKindOfClass:[NSDictionary class]]);
  EXPECT_EQ(find(with(all, @{(id)kSecMatchLimit : @0})), -50);
  EXPECT_EQ(find(with(all, @{(id)kSecMatchLimit : @"several"})), -50);
}

TEST_F(Keychain, AnswersNothingWhenNothingIsAskedFor) {
  add(secret(@"ann", "one"));
  id result = nil;
  EXPECT_EQ(find(password(@"ann"), &result), 0);
  EXPECT_EQ(result, nil);
}

TEST_F(Keychain, AnswersAttributesWithTheItemsDatesAndOwner) {
  NSDate *const before = [NSDate date];
  id added = nil;
  EXPECT_EQ(add(with(secret(@"ann", "one"), @{(id)kSecReturnAttributes : @YES}), &added), 0);
  EXPECT_TRUE([[added objectForKey:@"acct"] isEqual:@"ann"]);
  EXPECT_TRUE([[added objectForKey:@"svce"] isEqual:@"mail"]);
  EXPECT_TRUE([[added objectForKey:@"pdmn"] isEqual:@"ak"]);
  EXPECT_TRUE([[added objectForKey:@"sync"] isEqual:@NO]);
  EXPECT_TRUE([[added objectForKey:@"agrp"] isEqual:[[NSProcessInfo processInfo] processName]]);
  EXPECT_GE([[added objectForKey:@"cdat"] timeIntervalSinceDate:before], 0);
  EXPECT_TRUE([[added objectForKey:@"mdat"] isEqual:[added objectForKey:@"cdat"]]);
  EXPECT_EQ([added objectForKey:@"v_Data"], nil);
  EXPECT_EQ([added objectForKey:@"desc"], nil);
  NSDictionary *both = nil;
  find(with(password(@"ann"), @{(id)kSecReturnAttributes : @YES, (id)kSecReturnData : @YES}), &both);
  EXPECT_TRUE([[both objectForKey:@"v_Data"] isEqual:bytes("one")]);
  EXPECT_TRUE([[both objectForKey:@"acct"] isEqual:@"ann"]);
}

TEST_F(Keychain, FindsAnItemByItsReferences) {
  id reference = nil;
  add(with(secret(@"ann", "one"), @{(id)kSecReturnPersistentRef : @YES}), &reference);
  add(secret(@"bob", "two"));
  ASSERT_TRUE([reference isKindOfClass:[NSData class]]);
  NSData *data = nil;
  EXPECT_EQ(find(@{(id)kSecValuePersistentRef : reference, (id)kSecReturnData : @YES}, &data), 0);
  EXPECT_TRUE([data isEqual:bytes("one")]);
  id object = nil;
  EXPECT_EQ(find(with(password(@"bob"), @{(id)kSecReturnRef : @YES}), &object), 0);
  EXPECT_EQ(remove(@{(id)kSecValueRef : object}), 0);
  EXPECT_EQ(find(password(@"bob")), -25300);
  EXPECT_EQ(find(password(@"ann")), 0);
  EXPECT_EQ(find(@{(id)kSecValuePersistentRef : bytes("nonsense")}), -50);
  EXPECT_EQ(find(@{(id)kSecClass : (id)kSecClassKey, (id)kSecValuePersistentRef : reference}), -25300);
}

TEST_F(Keychain, UpdatesEveryItemThatMatches) {
  add(secret(@"ann", "one"));
  add(secret(@"bob", "two"));
  NSDictionary *const mail = @{(id)kSecClass : (id)kSecClassGenericPassword, (id)kSecAttrService : @"mail"};
  EXPECT_EQ(update(mail, @{(id)kSecValueData : bytes("new"), (id)kSecAttrLabel : @"Mail"}), 0);
  for (NSString *account in @[ @"ann", @"bob" ]) {
    NSDictionary *item = nil;
    find(with(password(account), @{(id)kSecReturnAttributes : @YES, (id)kSecReturnData : @YES}), &item);
    EXPECT_TRUE([[item objectForKey:@"v_Data"] isEqual:bytes("new")]);
    EXPECT_TRUE([[item objectForKey:@"labl"] isEqual:@"Mail"]);
    EXPECT_GE([[item objectForKey:@"mdat"] timeIntervalSinceDate:[item objectForKey:@"cdat"]], 0);
  }
}

TEST_F(Keychain, UpdatesNothingWhenAnItemWouldBecomeAnother) {
  add(secret(@"ann", "one"));
  add(secret(@"bob", "two"));
  EXPECT_EQ(update(password(@"bob"), @{(id)kSecAttrAccount : @"ann", (id)kSecValueData : bytes("new")}), -25299);
  NSData *data = nil;
  EXPECT_EQ(find(with(password(@"bob"), @{(id)kSecReturnData : @YES}), &data), 0);
  EXPECT_TRUE([data isEqual:bytes("two")]);
  EXPECT_EQ(update(password(@"bob"), @{(id)kSecAttrAccount : @"cem"}), 0);
  EXPECT_EQ(find(password(@"cem")), 0);
}

TEST_F(Keychain, RefusesToUpdateWithNothingOrWithWhatIsNoAttribute) {
  add(secret(@"ann", "one"));
  EXPECT_EQ(update(password(@"ann"), @{}), -50);
  EXPECT_EQ(update(password(@"ann"), nil), -50);
  EXPECT_EQ(update(password(@"ann"), @{(id)kSecClass : (id)kSecClassKey}), -50);
  EXPECT_EQ(update(password(@"ann"), @{(id)kSecReturnData : @YES}), -50);
  EXPECT_EQ(update(password(@"ann"), @{(id)kSecAttrServer : @"of another class"}), -25303);
}

TEST_F(Keychain, DeletesEveryItemThatMatchesAndNoOther) {
  for (NSString *account in @[ @"ann", @"bob" ])
    add(password(account));
  add(password(@"ann", @"web"));
  add(@{(id)kSecClass : (id)kSecClassInternetPassword, (id)kSecAttrAccount : @"ann"});
  EXPECT_EQ(remove(@{(id)kSecClass : (id)kSecClassGenericPassword, (id)kSecAttrService : @"mail"}), 0);
  EXPECT_EQ(count((id)kSecClassGenericPassword), 1u);
  EXPECT_EQ(remove(@{(id)kSecClass : (id)kSecClassGenericPassword}), 0);
  EXPECT_EQ(remove(@{(id)kSecClass : (id)kSecClassGenericPassword}), -25300);
  EXPECT_EQ(count((id)kSecClassInternetPassword), 1u);
}

TEST_F(Keychain, LeavesSharedItemsOutUnlessAQuerySaysSo) {
  add(with(password(@"ann"), @{(id)kSecAttrSynchronizable : @YES}));
  NSDictionary *const any = @{(id)kSecAttrSynchronizable : (id)kSecAttrSynchronizableAny};
  EXPECT_EQ(find(password(@"ann")), -25300);
  EXPECT_EQ(remove(password(@"ann")), -25300);
  EXPECT_EQ(find(with(password(@"ann"), any)), 0);
  EXPECT_EQ(find(with(password(@"ann"), @{(id)kSecAttrSynchronizable : @YES})), 0);
  EXPECT_EQ(remove(with(password(@"ann"), any)), 0);
  EXPECT_EQ(add(with(password(@"ann"), any)), -50);
}

TEST_F(Keychain, FindsTextInAnyCaseWhenAskedTo) {
  add(password(@"Ann"));
  EXPECT_EQ(find(password(@"ann")), -25300);
  EXPECT_EQ(find(with(password(@"ann"), @{(id)kSecMatchCaseInsensitive : @YES})), 0);
}

TEST_F(Keychain, RefusesADictionaryWithoutAClassAndWhatIsNoDictionary) {
  for (NSDictionary *bad in
       @[ @{}, @{(id)kSecAttrAccount : @"ann"}, @{(id)kSecClass : @"shoe"},
          @{(id)kSecClass : @7} ]) {
    EXPECT_EQ(add(bad), -50);
    EXPECT_EQ(find(bad), -50);
    EXPECT_EQ(update(bad, @{(id)kSecAttrLabel : @"x"}), -50);
    EXPECT_EQ(remove(bad), -50);
  }
  EXPECT_EQ(add(nil), -50);
  EXPECT_EQ(find(nil), -50);
  EXPECT_EQ(remove(nil), -50);
  EXPECT_EQ(remove((NSDictionary *)@"text"), -50);
}

TEST_F(Keychain, RefusesValuesOfTheWrongKindAndAttributesOfOtherClasses) {
  EXPECT_EQ(add(with(password(@"ann"), @{(id)kSecValueData : @"text"})), -50);
  EXPECT_EQ(add(with(password(@"ann"), @{(id)kSecAttrAccount : @7})), -50);
  EXPECT_EQ(add(with(password(@"ann"), @{(id)kSecAttrIsInvisible : @"yes"})), -50);
  EXPECT_EQ(add(with(password(@"ann"), @{(id)kSecAttrAccessible : @"never"})), -50);
  EXPECT_EQ(add(with(password(@"ann"), @{(id)kSecAttrServer : @"example.com"})), -25303);
  EXPECT_EQ(add(with(password(@"ann"), @{@"nonsense" : @1})), -25303);
  EXPECT_EQ(add(with(password(@"ann"), @{@7 : @1})), -50);
  EXPECT_EQ(count((id)kSecClassGenericPassword), 0u);
}

TEST_F(Keychain, RefusesKeysThatACallHasNoUseFor) {
  add(password(@"ann"));
  EXPECT_EQ(add(with(password(@"bob"), @{(id)kSecMatchLimit : (id)kSecMatchLimitAll})), -50);
  EXPECT_EQ(remove(with(password(@"ann"), @{(id)kSecMatchLimit : (id)kSecMatchLimitAll})), -50);
  EXPECT_EQ(remove(with(password(@"ann"), @{(id)kSecReturnData : @YES})), -50);
  EXPECT_EQ(find(with(password(@"ann"), @{@"m_Issuers" : @[]})), -4);
  EXPECT_EQ(find(password(@"ann")), 0);
}

TEST_F(Keychain, RefusesAnAccessGroupThatTheAppHasNoPartIn) {
  NSDictionary *const others = @{(id)kSecAttrAccessGroup : @"com.example.somebody-else"};
  EXPECT_EQ(add(with(password(@"ann"), others)), -34018);
  EXPECT_EQ(find(with(password(@"ann"), others)), -34018);
  EXPECT_EQ(remove(with(password(@"ann"), others)), -34018);
  add(password(@"ann"));
  EXPECT_EQ(update(password(@"ann"), others), -34018);
  NSDictionary *const own = @{(id)kSecAttrAccessGroup : [[NSProcessInfo processInfo] processName]};
  EXPECT_EQ(find(with(password(@"ann"), own)), 0);
}
