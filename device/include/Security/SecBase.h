#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <stdint.h>

#define SEC_EXTERN CF_EXPORT

typedef int32_t OSStatus;

enum : OSStatus {
  errSecSuccess = 0,
  errSecUnimplemented = -4,
  errSecIO = -36,
  errSecParam = -50,
  errSecAllocate = -108,
  errSecNotAvailable = -25291,
  errSecDuplicateItem = -25299,
  errSecItemNotFound = -25300,
  errSecNoSuchAttr = -25303,
  errSecInteractionNotAllowed = -25308,
  errSecDecode = -26275,
  errSecMissingEntitlement = -34018,
};
