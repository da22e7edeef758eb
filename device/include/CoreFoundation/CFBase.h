// CoreFoundation's types. An object of theirs is an Objective-C object on this device: either may be cast to the other.
#pragma once

#include <objc/objc.h>

#if defined(__cplusplus)
#define CF_EXTERN_C_BEGIN extern "C" {
#define CF_EXTERN_C_END }
#define CF_EXPORT extern "C"
#else
#define CF_EXTERN_C_BEGIN
#define CF_EXTERN_C_END
#define CF_EXPORT extern
#endif

typedef const void* CFTypeRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFBoolean* CFBooleanRef;
typedef const struct __CFData* CFDataRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFString* CFStringRef;
typedef struct __CFDictionary* CFMutableDictionaryRef;

CF_EXPORT const CFBooleanRef kCFBooleanTrue;
CF_EXPORT const CFBooleanRef kCFBooleanFalse;

CF_EXTERN_C_BEGIN
/// Neither takes NULL.
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CF_EXTERN_C_END
