#import <Foundation/Foundation.h>
#import <Security/SecItem.h>

#define QV_CONSTANT(NAME, VALUE) const CFStringRef NAME = (CFStringRef) @VALUE

// Classes.
QV_CONSTANT(kSecClass, "class");
QV_CONSTANT(kSecClassGenericPassword, "genp");
QV_CONSTANT(kSecClassInternetPassword, "inet");
QV_CONSTANT(kSecClassCertificate, "cert");
QV_CONSTANT(kSecClassKey, "keys");
QV_CONSTANT(kSecClassIdentity, "idnt");

// Attributes of every item.
QV_CONSTANT(kSecAttrAccessGroup, "agrp");
QV_CONSTANT(kSecAttrAccessible, "pdmn");
QV_CONSTANT(kSecAttrSynchronizable, "sync");
QV_CONSTANT(kSecAttrSynchronizableAny, "syna");
QV_CONSTANT(kSecAttrCreationDate, "cdat");
QV_CONSTANT(kSecAttrModificationDate, "mdat");
QV_CONSTANT(kSecAttrLabel, "labl");

// When an item can be read.
QV_CONSTANT(kSecAttrAccessibleWhenUnlocked, "ak");
QV_CONSTANT(kSecAttrAccessibleAfterFirstUnlock, "ck");
QV_CONSTANT(kSecAttrAccessibleAlways, "dk");
QV_CONSTANT(kSecAttrAccessibleWhenPasscodeSetThisDeviceOnly, "akpu");
QV_CONSTANT(kSecAttrAccessibleWhenUnlockedThisDeviceOnly, "aku");
QV_CONSTANT(kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly, "cku");
QV_CONSTANT(kSecAttrAccessibleAlwaysThisDeviceOnly, "dku");

// Attributes of passwords.
QV_CONSTANT(kSecAttrDescription, "desc");
QV_CONSTANT(kSecAttrComment, "icmt");
QV_CONSTANT(kSecAttrCreator, "crtr");
QV_CONSTANT(kSecAttrType, "type");
QV_CONSTANT(kSecAttrIsInvisible, "invi");
QV_CONSTANT(kSecAttrIsNegative, "nega");
QV_CONSTANT(kSecAttrAccount, "acct");
QV_CONSTANT(kSecAttrService, "svce");
QV_CONSTANT(kSecAttrGeneric, "gena");
QV_CONSTANT(kSecAttrSecurityDomain, "sdmn");
QV_CONSTANT(kSecAttrServer, "srvr");
QV_CONSTANT(kSecAttrProtocol, "ptcl");
QV_CONSTANT(kSecAttrProtocolHTTP, "http");
QV_CONSTANT(kSecAttrProtocolHTTPS, "htps");
QV_CONSTANT(kSecAttrAuthenticationType, "atyp");
QV_CONSTANT(kSecAttrAuthenticationTypeDefault, "dflt");
QV_CONSTANT(kSecAttrPort, "port");
QV_CONSTANT(kSecAttrPath, "path");

// Attributes of certificates.
QV_CONSTANT(kSecAttrSubject, "subj");
QV_CONSTANT(kSecAttrIssuer, "issr");
QV_CONSTANT(kSecAttrSerialNumber, "slnr");
QV_CONSTANT(kSecAttrSubjectKeyID, "skid");
QV_CONSTANT(kSecAttrPublicKeyHash, "pkhh");
QV_CONSTANT(kSecAttrCertificateType, "ctyp");
QV_CONSTANT(kSecAttrCertificateEncoding, "cenc");

// Attributes of keys.
QV_CONSTANT(kSecAttrKeyClass, "kcls");
QV_CONSTANT(kSecAttrKeyClassPublic, "0");
QV_CONSTANT(kSecAttrKeyClassPrivate, "1");
QV_CONSTANT(kSecAttrKeyClassSymmetric, "2");
QV_CONSTANT(kSecAttrApplicationLabel, "klbl");
QV_CONSTANT(kSecAttrIsPermanent, "perm");
QV_CONSTANT(kSecAttrApplicationTag, "atag");
QV_CONSTANT(kSecAttrKeyType, "type");
QV_CONSTANT(kSecAttrKeyTypeRSA, "42");
QV_CONSTANT(kSecAttrKeyTypeECSECPrimeRandom, "73");
QV_CONSTANT(kSecAttrKeySizeInBits, "bsiz");
QV_CONSTANT(kSecAttrEffectiveKeySize, "esiz");
QV_CONSTANT(kSecAttrCanEncrypt, "encr");
QV_CONSTANT(kSecAttrCanDecrypt, "decr");
QV_CONSTANT(kSecAttrCanDerive, "drve");
QV_CONSTANT(kSecAttrCanSign, "sign");
QV_CONSTANT(kSecAttrCanVerify, "vrfy");
QV_CONSTANT(kSecAttrCanWrap, "wrap");
QV_CONSTANT(kSecAttrCanUnwrap, "unwp");

// What is looked for and how many.
QV_CONSTANT(kSecMatchCaseInsensitive, "m_CaseInsensitive");
QV_CONSTANT(kSecMatchLimit, "m_Limit");
QV_CONSTANT(kSecMatchLimitOne, "m_LimitOne");
QV_CONSTANT(kSecMatchLimitAll, "m_LimitAll");

// What is answered.
QV_CONSTANT(kSecReturnData, "r_Data");
QV_CONSTANT(kSecReturnAttributes, "r_Attributes");
QV_CONSTANT(kSecReturnRef, "r_Ref");
QV_CONSTANT(kSecReturnPersistentRef, "r_PersistentRef");

// What an item is.
QV_CONSTANT(kSecValueData, "v_Data");
QV_CONSTANT(kSecValueRef, "v_Ref");
QV_CONSTANT(kSecValuePersistentRef, "v_PersistentRef");
