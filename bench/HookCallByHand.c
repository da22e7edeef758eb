// A hook as someone would write it in C who has nothing but the runtime's functions.
#include "HookCall.h"

#include <objc/message.h>
#include <objc/runtime.h>

unsigned long benchSeenByHand;

static SEL originalSelector;
static SEL replacementSelector;

static BOOL replacement(id self, SEL selector, id path, BOOL atomically) {
  (void)selector;
  BOOL (*const original)(id, SEL, id, BOOL) = (BOOL(*)(id, SEL, id, BOOL))objc_msg_lookup(self, replacementSelector);
  const BOOL written = original(self, replacementSelector, path, atomically);
  if (written) {
    ++benchSeenByHand;
  }
  return written;
}

void benchHookByHand(void) {
  originalSelector = sel_registerName("writeFile:atomically:");
  replacementSelector = sel_registerName("sb_writeFile:atomically:");
  Class cls = (Class)objc_lookUpClass(BENCH_HOOKED_BY_HAND);
  Method inherited = class_getInstanceMethod(cls, originalSelector);
  const char* types = method_getTypeEncoding(inherited);
  class_addMethod(cls, originalSelector, method_getImplementation(inherited), types);
  class_addMethod(cls, replacementSelector, (IMP)replacement, types);
  // Adding a method takes the class's dispatch table away, and GCC's runtime would write an exchange into the one that
  // all classes without a table share, where other classes find it. Asking for an implementation makes a new table.
  class_getMethodImplementation(cls, originalSelector);
  method_exchangeImplementations(class_getInstanceMethod(cls, originalSelector),
                                 class_getInstanceMethod(cls, replacementSelector));
}
