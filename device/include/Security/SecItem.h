// The keychain: small items that belong to the device and outlive an app's container. Each has one of five classes and
// the app that added it for an owner; an app sees its own items and no others.
#pragma once

#include <Security/SecBase.h>

CF_EXTERN_C_BEGIN

/// Adds one item. `result`, which may be NULL, receives what `attributes` asks to be answered; the caller releases it.
/// errSecDuplicateItem when there is one with the same primary attributes.
OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef* result);
/// One item, or with kSecMatchLimit an array; the caller releases it. errSecItemNotFound when none matches.
OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef* result);
/// Changes every item that matches, or none.
OSStatus SecItemUpdate(CFDictionaryRef query, CFDictionaryRef attributesToUpdate);
/// Deletes every item that matches.
OSStatus SecItemDelete(CFDictionaryRef query);

CF_EXTERN_C_END

// Classes.
SEC_EXTERN const CFStringRef kSecClass;
SEC_EXTERN const CFStringRef kSecClassGenericPassword;
SEC_EXTERN const CFStringRef kSecClassInternetPassword;
SEC_EXTERN const CFStringRef kSecClassCertificate;
SEC_EXTERN const CFStringRef kSecClassKey;
SEC_EXTERN const CFStringRef kSecClassIdentity;

// Attributes of every item.
SEC_EXTERN const CFStringRef kSecAttrAccessGroup;
SEC_EXTERN const CFStringRef kSecAttrAccessible;
SEC_EXTERN const CFStringRef kSecAttrSynchronizable;
SEC_EXTERN const CFStringRef kSecAttrSynchronizableAny;
SEC_EXTERN const CFStringRef kSecAttrCreationDate;
SEC_EXTERN const CFStringRef kSecAttrModificationDate;
SEC_EXTERN const CFStringRef kSecAttrLabel;

// When an item can be read.
SEC_EXTERN const CFStringRef kSecAttrAccessibleWhenUnlocked;
SEC_EXTERN const CFStringRef kSecAttrAccessibleAfterFirstUnlock;
SEC_EXTERN const CFStringRef kSecAttrAccessibleAlways;
SEC_EXTERN const CFStringRef kSecAttrAccessibleWhenPasscodeSetThisDeviceOnly;
SEC_EXTERN const CFStringRef kSecAttrAccessibleWhenUnlockedThisDeviceOnly;
SEC_EXTERN const CFStringRef kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly;
SEC_EXTERN const CFStringRef kSecAttrAccessibleAlwaysThisDeviceOnly;

// Attributes of passwords.
SEC_EXTERN const CFStringRef kSecAttrDescription;
SEC_EXTERN const CFStringRef kSecAttrComment;
SEC_EXTERN const CFStringRef kSecAttrCreator;
SEC_EXTERN const CFStringRef kSecAttrType;
SEC_EXTERN const CFStringRef kSecAttrIsInvisible;
SEC_EXTERN const CFStringRef kSecAttrIsNegative;
SEC_EXTERN const CFStringRef kSecAttrAccount;
SEC_EXTERN const CFStringRef kSecAttrService;
SEC_EXTERN const CFStringRef kSecAttrGeneric;
SEC_EXTERN const CFStringRef kSecAttrSecurityDomain;
SEC_EXTERN const CFStringRef kSecAttrServer;
SEC_EXTERN const CFStringRef kSecAttrProtocol;
SEC_EXTERN const CFStringRef kSecAttrProtocolHTTP;
SEC_EXTERN const CFStringRef kSecAttrProtocolHTTPS;
SEC_EXTERN const CFStringRef kSecAttrAuthenticationType;
SEC_EXTERN const CFStringRef kSecAttrAuthenticationTypeDefault;
SEC_EXTERN const CFStringRef kSecAttrPort;
SEC_EXTERN const CFStringRef kSecAttrPath;

// Attributes of certificates.
SEC_EXTERN const CFStringRef kSecAttrSubject;
SEC_EXTERN const CFStringRef kSecAttrIssuer;
SEC_EXTERN const CFStringRef kSecAttrSerialNumber;
SEC_EXTERN const CFStringRef kSecAttrSubjectKeyID;
SEC_EXTERN const CFStringRef kSecAttrPublicKeyHash;
SEC_EXTERN const CFStringRef kSecAttrCertificateType;
SEC_EXTERN const CFStringRef kSecAttrCertificateEncoding;

// Attributes of keys.
SEC_EXTERN const CFStringRef kSecAttrKeyClass;
SEC_EXTERN const CFStringRef kSecAttrKeyClassPublic;
SEC_EXTERN const CFStringRef kSecAttrKeyClassPrivate;
SEC_EXTERN const CFStringRef kSecAttrKeyClassSymmetric;
SEC_EXTERN const CFStringRef kSecAttrApplicationLabel;
SEC_EXTERN const CFStringRef kSecAttrIsPermanent;
SEC_EXTERN const CFStringRef kSecAttrApplicationTag;
SEC_EXTERN const CFStringRef kSecAttrKeyType;
SEC_EXTERN const CFStringRef kSecAttrKeyTypeRSA;
SEC_EXTERN const CFStringRef kSecAttrKeyTypeECSECPrimeRandom;
SEC_EXTERN const CFStringRef kSecAttrKeySizeInBits;
SEC_EXTERN const CFStringRef kSecAttrEffectiveKeySize;
SEC_EXTERN const CFStringRef kSecAttrCanEncrypt;
SEC_EXTERN const CFStringRef kSecAttrCanDecrypt;
SEC_EXTERN const CFStringRef kSecAttrCanDerive;
SEC_EXTERN const CFStringRef kSecAttrCanSign;
SEC_EXTERN const CFStringRef kSecAttrCanVerify;
SEC_EXTERN const CFStringRef kSecAttrCanWrap;
SEC_EXTERN const CFStringRef kSecAttrCanUnwrap;

// What is looked for and how many.
SEC_EXTERN const CFStringRef kSecMatchCaseInsensitive;
SEC_EXTERN const CFStringRef kSecMatchLimit;
SEC_EXTERN const CFStringRef kSecMatchLimitOne;
SEC_EXTERN const CFStringRef kSecMatchLimitAll;

// What is answered.
SEC_EXTERN const CFStringRef kSecReturnData;
SEC_EXTERN const CFStringRef kSecReturnAttributes;
SEC_EXTERN const CFStringRef kSecReturnRef;
SEC_EXTERN const CFStringRef kSecReturnPersistentRef;

// What an item is.
SEC_EXTERN const CFStringRef kSecValueData;
SEC_EXTERN const CFStringRef kSecValueRef;
SEC_EXTERN const CFStringRef kSecValuePersistentRef;
