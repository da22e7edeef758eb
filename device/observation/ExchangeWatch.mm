// Looks on while the library under test makes its methods known and exchanges them. The library adds a method by which
// every class exchanges two of its own; the device puts itself around that one as soon as it is there, and so sees each
// exchange with both names and, where it is refused, the reason. Nothing of this happens when nobody follows the trace.
#include <dlfcn.h>

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <string>
#include <string_view>

#include "observation/Hooks.h"
#include "observation/Library.h"
#include "observation/Questions.h"
#include "runtime/Methods.h"

namespace {

using namespace qvdevice;

constexpr std::string_view kExchange = "qvsbjr_swizzleMethod:withMethod:error:";

using Exchange = BOOL (*)(Class, SEL, SEL, SEL, NSError **);
Exchange exchange = nullptr;

/// What follows the name of the method that speaks.
std::string reasonIn(NSError *error) {
  const char *const description = [[error localizedDescription] UTF8String];
  const std::string text = description ? description : "";
  const std::size_t name = text.find("]: ");
  return name == std::string::npos ? text : text.substr(name + 3);
}

BOOL watchedExchange(Class self, SEL selector, SEL original, SEL replacement, NSError **error) {
  // All that the library brings is there before its first exchange.
  static const bool watched = (watchQuestions(), true);
  (void)watched;
  // Some ask for no error; the reason is there all the same.
  NSError *ours = nil;
  NSError **const slot = error ? error : &ours;
  const BOOL exchanged = exchange(self, selector, original, replacement, slot);
  noteExchange(self, original, replacement, exchanged, exchanged ? std::string() : reasonIn(*slot));
  return exchanged;
}

using Add = BOOL (*)(Class, SEL, IMP, const char *);

void look(Class cls, SEL selector, IMP implementation, bool added) {
  if (!isInLibrary(reinterpret_cast<const void *>(implementation))) return;
  if (added && sel_getName(selector) == kExchange) {
    exchange = implementationAs<Exchange>(implementation);
    method_setImplementation(class_getInstanceMethod(cls, selector), asImplementation(watchedExchange));
    return;
  }
  noteAddition(cls, selector, implementation, added);
}

} // namespace

// Takes the place of the runtime's own.
BOOL class_addMethod(Class cls, SEL selector, IMP implementation, const char *types) {
  static const auto add = reinterpret_cast<Add>(dlsym(RTLD_NEXT, "class_addMethod"));
  const BOOL added = add(cls, selector, implementation, types);
  if (isObserved()) look(cls, selector, implementation, added);
  return added;
}
