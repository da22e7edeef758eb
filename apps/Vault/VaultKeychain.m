#import "VaultKeychain.h"

#import <Security/Security.h>

@implementation VaultKeychain

+ (NSData *)secret:(NSString *)text {
  return [text dataUsingEncoding:NSUTF8StringEncoding];
}

+ (void)add:(NSDictionary *)item {
  const OSStatus status = SecItemAdd((CFDictionaryRef)item, NULL);
  if (status != errSecSuccess && status != errSecDuplicateItem) {
    NSLog(@"Could not keep the secret \"%@\": %d.", [item objectForKey:(id)kSecAttrLabel], (int)status);
  }
}

+ (void)fill {
  for (NSString *account in [NSArray arrayWithObjects:@"ann", @"bob", @"cem", nil]) {
    [self add:@{
      (id)kSecClass : (id)kSecClassGenericPassword,
      (id)kSecAttrService : @"Vault",
      (id)kSecAttrAccount : account,
      (id)kSecAttrLabel : @"PIN",
      (id)kSecAttrAccessible : (id)kSecAttrAccessibleWhenUnlockedThisDeviceOnly,
      (id)kSecValueData : [self secret:[@"PIN of " stringByAppendingString:account]]
    }];
  }
  [self add:@{
    (id)kSecClass : (id)kSecClassInternetPassword,
    (id)kSecAttrServer : @"vault.example.com",
    (id)kSecAttrProtocol : (id)kSecAttrProtocolHTTPS,
    (id)kSecAttrPort : @443,
    (id)kSecAttrAccount : @"ann",
    (id)kSecAttrLabel : @"Web password",
    (id)kSecValueData : [self secret:@"correct horse"]
  }];
  [self add:@{
    (id)kSecClass : (id)kSecClassCertificate,
    (id)kSecAttrIssuer : [self secret:@"Example CA"],
    (id)kSecAttrSerialNumber : [self secret:@"01"],
    (id)kSecAttrLabel : @"Certificate",
    (id)kSecValueData : [self secret:@"certificate"]
  }];
  [self add:@{
    (id)kSecClass : (id)kSecClassKey,
    (id)kSecAttrKeyType : (id)kSecAttrKeyTypeRSA,
    (id)kSecAttrKeyClass : (id)kSecAttrKeyClassPrivate,
    (id)kSecAttrApplicationTag : [self secret:@"com.example.vault.key"],
    (id)kSecAttrLabel : @"Private key",
    (id)kSecValueData : [self secret:@"key"]
  }];
  [self add:@{
    (id)kSecClass : (id)kSecClassIdentity,
    (id)kSecAttrIssuer : [self secret:@"Example CA"],
    (id)kSecAttrSerialNumber : [self secret:@"02"],
    (id)kSecAttrLabel : @"Identity",
    (id)kSecValueData : [self secret:@"identity"]
  }];
}

+ (NSUInteger)countOf:(CFStringRef)itemClass {
  CFTypeRef items = NULL;
  SecItemCopyMatching(
      (CFDictionaryRef)
          @{(id)kSecClass : (id)itemClass, (id)kSecMatchLimit : (id)kSecMatchLimitAll, (id)kSecReturnAttributes : @YES},
      &items);
  return [[(id)items autorelease] count];
}

+ (NSString *)inventory {
  return [NSString stringWithFormat:@"%u generic passwords, %u internet passwords, %u certificates, %u keys, "
                                    @"%u identities",
                                    (unsigned)[self countOf:kSecClassGenericPassword],
                                    (unsigned)[self countOf:kSecClassInternetPassword],
                                    (unsigned)[self countOf:kSecClassCertificate],
                                    (unsigned)[self countOf:kSecClassKey], (unsigned)[self countOf:kSecClassIdentity]];
}

@end
