// The runtime functions that compilers call for ownership, weak references and autorelease pools.

#ifndef QVDEVICE_OBJC_ARC_H
#define QVDEVICE_OBJC_ARC_H

#include <objc/objc.h>

#ifdef __cplusplus
extern "C" {
#endif

id objc_retain(id object);
void objc_release(id object);
id objc_autorelease(id object);

/// A weak reference is a place in memory, `location`, that these functions alone read and write. It becomes nil before
/// the object that it refers to is deallocated, whichever thread lets go of that object last.
id objc_initWeak(id* location, id object);
id objc_storeWeak(id* location, id object);
id objc_loadWeakRetained(id* location);
id objc_loadWeak(id* location);
void objc_destroyWeak(id* location);
void objc_copyWeak(id* to, id* from);
void objc_moveWeak(id* to, id* from);

void* objc_autoreleasePoolPush(void);
void objc_autoreleasePoolPop(void* pool);

#ifdef __cplusplus
}
#endif

#endif
