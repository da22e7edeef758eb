// Foundation as a phone's apps see it: Debian's, and what it lacks.
#pragma once

#include_next <Foundation/Foundation.h>

#import <Foundation/NSData.h>
#import <Foundation/NSFileManager.h>

#ifndef NS_STRING_ENUM
#define NS_STRING_ENUM
#endif
#ifndef NS_TYPED_ENUM
#define NS_TYPED_ENUM
#endif
#ifndef NS_REQUIRES_SUPER
#define NS_REQUIRES_SUPER __attribute__((objc_requires_super))
#endif
#ifndef NS_SWIFT_NAME
#define NS_SWIFT_NAME(...)
#endif
#ifndef API_AVAILABLE
#define API_AVAILABLE(...)
#endif
#ifndef API_DEPRECATED
#define API_DEPRECATED(...)
#endif
