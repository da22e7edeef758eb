// The library's one Objective-C++ file: the compiler's own exception handling, given a C++ face.
#include "exception.hpp"

namespace qvsb {

namespace detail {

void tryCatch(void (*body)(void *), void *bodyContext, bool (*handler)(void *, id), void *handlerContext) {
  @try {
    body(bodyContext);
  } @catch (::id exception) {
    if (!handler(handlerContext, reinterpret_cast<objc_object *>(exception))) {
      @throw;
    }
  }
}

void tryFinally(void (*body)(void *), void *bodyContext, void (*cleanup)(void *), void *cleanupContext) {
  @try {
    body(bodyContext);
  } @finally {
    cleanup(cleanupContext);
  }
}

} // namespace detail

void throwObject(Object exception) { @throw reinterpret_cast<::id>(exception.raw()); }

} // namespace qvsb
