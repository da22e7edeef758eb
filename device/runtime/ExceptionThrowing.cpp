// Apple's runtime keeps an exception alive while it is under way; GCC's does not, and one that was autoreleased dies
// with a pool that it unwinds through, before anybody catches it. This function takes the place of the runtime's own
// and keeps every exception for good: nothing tells when its last handler has ended.
#include <dlfcn.h>

struct objc_object;
struct objc_selector;

extern "C" {
objc_object* (*objc_msg_lookup(objc_object* receiver, objc_selector* selector))(objc_object*, objc_selector*);
objc_selector* sel_registerName(const char* name);
[[noreturn]] void objc_exception_throw(objc_object* exception);
}

void objc_exception_throw(objc_object* exception) {
  static auto* const raise =
      reinterpret_cast<decltype(&objc_exception_throw)>(dlsym(RTLD_NEXT, "objc_exception_throw"));
  if (exception) {
    objc_selector* const retain = sel_registerName("retain");
    objc_msg_lookup(exception, retain)(exception, retain);
  }
  raise(exception);
  __builtin_unreachable();
}
