// The Objective-C runtime's C interface, declared here because no SDK header is included: the library is compiled for
// iOS on machines that have no SDK. Only what the binding calls, with the signatures both runtimes share.
//
// Never include this file together with the runtime's own headers: the names are the same.
#pragma once

#include "target.hpp"

struct objc_object;
struct objc_class;
struct objc_selector;
struct objc_method;
struct objc_ivar;

namespace qvsb {

using id = objc_object*;
using Method = objc_method*;
using Ivar = objc_ivar*;

/// A method's implementation without its type. Call it only through the type that the method's encoding promises.
using IMP = void (*)();

} // namespace qvsb

extern "C" {

objc_selector* sel_registerName(const char* name);
const char* sel_getName(objc_selector* selector);
qvsb::BOOL sel_isEqual(objc_selector* left, objc_selector* right);

objc_class* objc_lookUpClass(const char* name);
objc_class* objc_getClass(const char* name);
objc_object* objc_getProtocol(const char* name);
objc_class* objc_allocateClassPair(objc_class* superclass, const char* name, unsigned long extraBytes);
void objc_registerClassPair(objc_class* cls);
void objc_disposeClassPair(objc_class* cls);

const char* class_getName(objc_class* cls);
objc_class* class_getSuperclass(objc_class* cls);
qvsb::BOOL class_isMetaClass(objc_class* cls);
qvsb::BOOL class_addIvar(objc_class* cls, const char* name, unsigned long size, unsigned char alignment,
                         const char* types);
qvsb::BOOL class_addProtocol(objc_class* cls, objc_object* protocol);
qvsb::BOOL class_addMethod(objc_class* cls, objc_selector* selector, qvsb::IMP implementation, const char* types);
objc_method* class_getInstanceMethod(objc_class* cls, objc_selector* selector);
qvsb::IMP class_getMethodImplementation(objc_class* cls, objc_selector* selector);
objc_ivar* class_getInstanceVariable(objc_class* cls, const char* name);
long ivar_getOffset(objc_ivar* ivar);

objc_selector* method_getName(objc_method* method);
const char* method_getTypeEncoding(objc_method* method);
unsigned int method_getNumberOfArguments(objc_method* method);
// The caller frees what these give.
char* method_copyReturnType(objc_method* method);
char* method_copyArgumentType(objc_method* method, unsigned int index);
qvsb::IMP method_getImplementation(objc_method* method);
void method_exchangeImplementations(objc_method* left, objc_method* right);

#if QVSB_APPLE_RUNTIME
objc_class* object_getClass(objc_object* object);
#else
// GCC's runtime has it as an inline function only: the class is an object's first word.
inline objc_class* object_getClass(objc_object* object) {
  return object ? *reinterpret_cast<objc_class**>(object) : nullptr;
}
#endif

int objc_sync_enter(objc_object* object);
int objc_sync_exit(objc_object* object);

// Apple's names; the device supplies them over GCC's runtime.
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
objc_object* objc_initWeak(objc_object** location, objc_object* object);
objc_object* objc_loadWeakRetained(objc_object** location);
objc_object* objc_storeWeak(objc_object** location, objc_object* object);
void objc_destroyWeak(objc_object** location);

void* _Block_copy(const void* block);
void _Block_release(const void* block);
extern void* _NSConcreteStackBlock[32];

// Sending: the one place where the two runtimes differ is send.hpp.
struct objc_super {
  objc_object* receiver;
  objc_class* superclass;
};
#if QVSB_APPLE_RUNTIME
void objc_msgSend();
void objc_msgSendSuper();
#if defined(__x86_64__)
void objc_msgSend_stret();
void objc_msgSendSuper_stret();
#endif
#else
qvsb::IMP objc_msg_lookup(objc_object* receiver, objc_selector* selector);
qvsb::IMP objc_msg_lookup_super(objc_super* super, objc_selector* selector);
#endif
}
