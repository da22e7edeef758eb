// GCC's own, with truth values that can be boxed: @YES, as apps write it.

#ifndef QVDEVICE_OBJC_H
#define QVDEVICE_OBJC_H

#include_next <objc/objc.h>

#undef YES
#undef NO
#define YES ((BOOL)1)
#define NO ((BOOL)0)

#endif
