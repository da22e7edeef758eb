// The keychain.
#pragma once

#include <cstdint>

#include "../Foundation/NSDictionary.hpp"

namespace qvsb {

using OSStatus = std::int32_t;

} // namespace qvsb

extern "C" {
extern objc_object* qvsbSecClass QVSB_SYMBOL(kSecClass);
extern objc_object* qvsbSecClassGenericPassword QVSB_SYMBOL(kSecClassGenericPassword);
extern objc_object* qvsbSecClassInternetPassword QVSB_SYMBOL(kSecClassInternetPassword);
extern objc_object* qvsbSecClassCertificate QVSB_SYMBOL(kSecClassCertificate);
extern objc_object* qvsbSecClassKey QVSB_SYMBOL(kSecClassKey);
extern objc_object* qvsbSecClassIdentity QVSB_SYMBOL(kSecClassIdentity);

qvsb::OSStatus qvsbSecItemDelete(objc_object* query) QVSB_SYMBOL(SecItemDelete);
}

namespace qvsb {

inline NSString kSecClass() { return NSString(qvsbSecClass); }
inline NSString kSecClassGenericPassword() { return NSString(qvsbSecClassGenericPassword); }
inline NSString kSecClassInternetPassword() { return NSString(qvsbSecClassInternetPassword); }
inline NSString kSecClassCertificate() { return NSString(qvsbSecClassCertificate); }
inline NSString kSecClassKey() { return NSString(qvsbSecClassKey); }
inline NSString kSecClassIdentity() { return NSString(qvsbSecClassIdentity); }

/// Deletes all of this app's keychain items that match; 0 when there were any. Any thread.
inline OSStatus SecItemDelete(NSDictionary query) { return qvsbSecItemDelete(query.raw()); }

} // namespace qvsb
